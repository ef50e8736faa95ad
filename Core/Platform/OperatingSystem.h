#pragma once

#include "Core/Support/EnumTable.h"

#include <array>
#include <optional>
#include <string_view>

namespace pacelet {

/// The system that a host runs.
enum class OperatingSystem { macOS, linuxDesktop };

/// How the system and a machine with it are called.
struct OperatingSystemRow {
    OperatingSystem value;
    std::string_view rawValue; ///< in the catalog's file
    std::string_view name;     ///< of the system
    std::string_view machine;  ///< as in "Your Mac"
};

inline constexpr std::array<OperatingSystemRow, 2> operatingSystems{{
    {OperatingSystem::macOS, "macOS", "macOS", "Mac"},
    {OperatingSystem::linuxDesktop, "Linux", "Linux", "computer"},
}};

constexpr std::string_view nameOf(OperatingSystem system) {
    return rowOf(operatingSystems, system).name;
}

constexpr std::string_view machineOf(OperatingSystem system) {
    return rowOf(operatingSystems, system).machine;
}

constexpr std::optional<OperatingSystem> operatingSystemFromRawValue(std::string_view rawValue) {
    return fromRawValue<OperatingSystem>(operatingSystems, rawValue);
}

} // namespace pacelet
