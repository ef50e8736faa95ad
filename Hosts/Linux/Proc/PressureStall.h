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

/// The kernel's pressure level, 1 normal, 2 warn or 4 critical, out of the stalls and of the share
/// of memory that could still be handed out, from 0 to 1; nothing where neither is told. Stalls
/// alone are no sign: those of a container that may use little count for the whole machine, too.
std::optional<std::int32_t> pressureLevel(const PressureStall& stall,
                                          std::optional<double> availableShare);

} // namespace pacelet::Linux
