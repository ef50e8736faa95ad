#pragma once

#include "Core/Support/Text.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace pacelet::Linux {

/// The byte count of a figure in kilobytes, such as " 1024 kB". A figure past 64 bits, or below 0,
/// is none.
inline std::optional<std::int64_t> parseKilobytes(std::string_view value) {
    value = trimmed(value);
    value = value.substr(0, value.find(' '));
    const auto kilobytes = parseInteger<std::int64_t>(value);
    if (!kilobytes || *kilobytes < 0 ||
        *kilobytes > std::numeric_limits<std::int64_t>::max() / 1024) {
        return std::nullopt;
    }
    return *kilobytes * 1024;
}

/// Calls `visit(key, value)` for each line "key: value" of a kernel text.
template<typename Visitor>
void forEachFigure(std::string_view text, Visitor&& visit) {
    forEachLine(text, [&](std::string_view line) {
        if (const std::size_t colon = line.find(':'); colon != std::string_view::npos) {
            visit(line.substr(0, colon), line.substr(colon + 1));
        }
    });
}

} // namespace pacelet::Linux
