#pragma once

#include "Core/Platform/ProcessSample.h"

#include <optional>
#include <string_view>
#include <vector>

namespace pacelet::PSParser {

/// Reads the table that `ps -axo pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm=` prints. A line that
/// does not read is skipped. An `rss` of more bytes than 64 bits hold stops the program.
std::vector<ProcessSample> parse(std::string_view text);

/// Seconds of a `ps` time field: minutes and seconds, or hours, minutes and seconds, between
/// colons.
std::optional<double> cpuSeconds(std::string_view text);

} // namespace pacelet::PSParser
