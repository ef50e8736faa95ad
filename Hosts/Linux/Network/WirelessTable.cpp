#include "Hosts/Linux/Network/WirelessTable.h"

#include "Core/Support/Text.h"

#include <optional>

namespace pacelet::Linux {

namespace {

/// A column such as "-40." (the point marks a fresh figure) as dBm. The kernel prints relative
/// figures as they are, from 0 up, and an unknown one as -256.
std::optional<std::int64_t> decibels(std::string_view column) {
    constexpr std::int64_t unknown = -256;
    if (column.ends_with('.')) {
        column.remove_suffix(1);
    }
    const auto figure = parseInteger<std::int64_t>(column);
    if (!figure) {
        return std::nullopt;
    }
    return *figure < 0 && *figure > unknown ? *figure : 0;
}

} // namespace

std::vector<WirelessRow> parseWirelessTable(std::string_view text) {
    constexpr std::size_t signalColumn = 2;
    constexpr std::size_t noiseColumn = 3;
    std::vector<WirelessRow> rows;
    forEachLine(text, [&](std::string_view line) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos) {
            return; // the heading
        }
        const auto columns = splitDroppingEmpty(line.substr(colon + 1), ' ');
        if (columns.size() <= noiseColumn) {
            return;
        }
        const auto signal = decibels(columns[signalColumn]);
        const auto noise = decibels(columns[noiseColumn]);
        const std::string_view name = trimmed(line.substr(0, colon));
        if (signal && noise && !name.empty()) {
            rows.push_back({std::string{name}, *signal, *noise});
        }
    });
    return rows;
}

} // namespace pacelet::Linux
