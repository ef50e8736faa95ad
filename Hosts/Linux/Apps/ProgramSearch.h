#pragma once

#include <optional>
#include <span>
#include <string>

namespace pacelet::Linux {

/// Whether this user may run the file.
bool isExecutable(const std::string& path);

/// The executable file that `name` means: an absolute path as it stands, else the first of that
/// name in `searchPath`. Nothing when there is none.
std::optional<std::string> findProgram(const std::string& name,
                                       std::span<const std::string> searchPath);

} // namespace pacelet::Linux
