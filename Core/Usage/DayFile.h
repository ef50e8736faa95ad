#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace pacelet::DayFile {

/// Adds `line` at the end of the file at `path`, without a temporary file, and ends the line
/// before it where that is torn. When the file cannot be
/// opened for writing, whatever the reason, `line` is written as the whole file, which makes it. A
/// write that fails halfway is taken back as far as the system allows. An error of closing is
/// ignored. The file is for its owner alone from then on.
std::error_code append(const std::string& path, std::string_view line);

} // namespace pacelet::DayFile
