#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// One line of the table that drivers without the newer service fill. A figure that is not in dBm,
/// or not known, is 0.
struct WirelessRow {
    std::string interfaceName;
    std::int64_t signalDBm = 0;
    std::int64_t noiseDBm = 0;

    bool operator==(const WirelessRow&) const = default;
};

/// Reads `/proc/net/wireless`; a line that does not read is left out.
std::vector<WirelessRow> parseWirelessTable(std::string_view text);

} // namespace pacelet::Linux
