#pragma once

#include <optional>
#include <span>
#include <string>

namespace pacelet::Linux {

/// The executable file that `name` means: an absolute path as it stands, else the first of that
/// name in `searchPath`. Nothing when there is none.
std::optional<std::string> findProgram(const std::string& name,
                                       std::span<const std::string> searchPath);

} // namespace pacelet::Linux
