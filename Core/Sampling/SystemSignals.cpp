#include "Core/Sampling/SystemSignals.h"

#include "Core/Support/EnumTable.h"

#include <algorithm>
#include <array>

namespace pacelet {

namespace {

struct PressureRow {
    Pressure value;
    std::string_view label;
};
constexpr std::array<PressureRow, 3> pressures{{
    {Pressure::normal, "Normal"},
    {Pressure::elevated, "Elevated"},
    {Pressure::critical, "Critical"},
}};

struct ThermalRow {
    Thermal value;
    std::string_view label;
};
constexpr std::array<ThermalRow, 4> thermals{{
    {Thermal::normal, "Normal"},
    {Thermal::warm, "Warm"},
    {Thermal::hot, "Hot"},
    {Thermal::veryHot, "Very hot"},
}};

} // namespace

Pressure pressureFromSysctlLevel(std::int32_t level) {
    constexpr std::int32_t warning = 2;
    constexpr std::int32_t critical = 4;
    switch (level) {
    case warning:
        return Pressure::elevated;
    case critical:
        return Pressure::critical;
    default:
        return Pressure::normal;
    }
}

std::string_view label(Pressure pressure) {
    return rowOf(pressures, pressure).label;
}

Thermal thermalFromState(int state) {
    for (const ThermalRow& row : thermals) {
        if (static_cast<int>(row.value) == state) {
            return row.value;
        }
    }
    return Thermal::normal;
}

std::string_view label(Thermal thermal) {
    return rowOf(thermals, thermal).label;
}

double SystemSignals::cpuLoad(double totalPercent, std::int64_t cores) {
    const auto divisor = static_cast<double>(std::max<std::int64_t>(cores, 1));
    return std::clamp(totalPercent / divisor, 0.0, 100.0);
}

} // namespace pacelet
