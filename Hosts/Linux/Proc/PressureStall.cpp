#include "Hosts/Linux/Proc/PressureStall.h"

#include "Core/Support/Text.h"

namespace pacelet::Linux {

namespace {

std::optional<double> averageOfTenSeconds(std::string_view line) {
    constexpr std::string_view key = "avg10=";
    const std::size_t at = line.find(key);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    line.remove_prefix(at + key.size());
    return parseFloat(line.substr(0, line.find(' ')));
}

} // namespace

PressureStall parsePressureStall(std::string_view text) {
    PressureStall stall;
    forEachLine(text, [&](std::string_view line) {
        if (line.starts_with("some ")) {
            stall.some = averageOfTenSeconds(line);
        } else if (line.starts_with("full ")) {
            stall.full = averageOfTenSeconds(line);
        }
    });
    return stall;
}

std::optional<std::int32_t> pressureLevel(const PressureStall& stall) {
    constexpr std::int32_t normal = 1;
    constexpr std::int32_t warn = 2;
    constexpr std::int32_t critical = 4;
    if (!stall.some && !stall.full) {
        return std::nullopt;
    }
    if (stall.full.value_or(0) >= criticalFullPercent) {
        return critical;
    }
    return stall.some.value_or(0) >= elevatedSomePercent ? warn : normal;
}

} // namespace pacelet::Linux
