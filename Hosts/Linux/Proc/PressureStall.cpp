#include "Hosts/Linux/Proc/PressureStall.h"

#include "Core/Support/Text.h"

namespace pacelet::Linux {

namespace {

/// Work that waits for memory a tenth of the time is felt.
constexpr double feltPercent = 10;

/// Shares of memory that could still be handed out. With so much the machine as a whole lacks none,
/// whoever waits for it.
constexpr double roomyFrom = 0.25;
constexpr double scarceBelow = 0.10;
constexpr double exhaustedBelow = 0.04;

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

std::optional<std::int32_t> pressureLevel(const PressureStall& stall,
                                          std::optional<double> availableShare) {
    constexpr std::int32_t normal = 1;
    constexpr std::int32_t warn = 2;
    constexpr std::int32_t critical = 4;
    const bool tellsStalls = stall.some || stall.full;
    if (!tellsStalls) {
        return !availableShare                    ? std::nullopt
               : *availableShare < exhaustedBelow ? std::optional{critical}
               : *availableShare < scarceBelow    ? std::optional{warn}
                                                  : std::optional{normal};
    }
    const double share = availableShare.value_or(0);
    if (share >= roomyFrom) {
        return normal;
    }
    const bool allWait = stall.full.value_or(0) >= feltPercent;
    if (allWait && share < scarceBelow) {
        return critical;
    }
    const bool isExhausted = availableShare && share < exhaustedBelow;
    return allWait || stall.some.value_or(0) >= feltPercent || isExhausted ? warn : normal;
}

} // namespace pacelet::Linux
