#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace pacelet::Linux {

/// What a new file is to outlive. A power cut takes waiting for the disk, so not on the UI thread.
enum class Outlives { crash, powerCut };

/// Puts `contents` in the place of the file at `path`, making its folder (for the user alone) where
/// it is missing. Whoever reads it meanwhile, or after what it outlives, finds the old or the new
/// contents whole. A link stays, and what it leads to is replaced. Only a regular file is
/// (`errc::invalid_argument` else). On an error the file is as it was.
std::error_code replaceFile(const std::string& path, std::string_view contents, Outlives what);

/// Renames the file at `path`, or what a link there leads to, to a name beside it that is free. It
/// succeeds where there is none.
std::error_code setFileAside(const std::string& path);

} // namespace pacelet::Linux
