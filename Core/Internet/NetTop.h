#pragma once

#include "Core/Internet/NetUsage.h"
#include "Core/Platform/ToolRunner.h"

#include <string>
#include <string_view>
#include <vector>

/// Which processes use the network right now, out of `/usr/bin/nettop`.
namespace pacelet::NetTop {

/// One line a process, changes instead of totals, two samples a second apart, plain numbers.
const std::vector<std::string>& arguments();

/// The largest rate that is believed, in bytes per second: floats count every byte up to it, and
/// the sum of a thousand such rates still fits 64 bits.
inline constexpr double mostBytesPerSecond = 9007199254740992.0;

/// Reads the last sample of the tool's output, busiest first, equal totals in the order of the
/// output. Idle processes are left out; so is every line that does not read, or whose rates are not
/// finite or beyond the largest one believed.
std::vector<NetUsage> parse(std::string_view text);

/// Runs the tool, which takes somewhat over a second. Blocks. Throws `LaunchError`; a run that
/// fails gives what it printed.
std::vector<NetUsage> sample(ToolRunner& tools);

} // namespace pacelet::NetTop
