#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace pacelet::Linux {

/// Puts `contents` in the place of the file at `path`, making its folder (for the user alone) where
/// it is missing. Whoever reads it meanwhile, or after a crash, finds the old or the new contents
/// whole. On an error the file is as it was.
std::error_code replaceFile(const std::string& path, std::string_view contents);

} // namespace pacelet::Linux
