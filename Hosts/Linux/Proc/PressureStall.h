#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace pacelet::Linux {

/// What `/proc/pressure/memory` says of the last ten seconds: the percentage of time in which
/// programs waited for memory, at least one of them ("some") or all of them at once ("full").
struct PressureStall {
    std::optional<double> some;
    std::optional<double> full;

    bool operator==(const PressureStall&) const = default;
};

PressureStall parsePressureStall(std::string_view text);

/// From here on memory is scarce enough to be felt: work waits for it a tenth of the time.
inline constexpr double elevatedSomePercent = 10;
/// From here on the whole machine stands still for a tenth of the time.
inline constexpr double criticalFullPercent = 10;

/// The kernel's pressure level, 1 normal, 2 warn or 4 critical; nothing where the kernel does not
/// measure it.
std::optional<std::int32_t> pressureLevel(const PressureStall& stall);

} // namespace pacelet::Linux
