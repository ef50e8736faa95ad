#include "PaceletApp/Components/Tone.h"

#include "Core/Support/EnumTable.h"

#include <array>

namespace pacelet {

namespace {

struct PressureRow {
    Pressure value;
    Tone tone;
};
constexpr std::array<PressureRow, 3> pressures{{
    {Pressure::normal, Tone::Green},
    {Pressure::elevated, Tone::Amber},
    {Pressure::critical, Tone::Red},
}};

struct ThermalRow {
    Thermal value;
    Tone tone;
};
constexpr std::array<ThermalRow, 4> thermals{{
    {Thermal::normal, Tone::Green},
    {Thermal::warm, Tone::Amber},
    {Thermal::hot, Tone::Red},
    {Thermal::veryHot, Tone::Red},
}};

} // namespace

Tone toneOf(Pressure pressure) {
    return rowOf(pressures, pressure).tone;
}

Tone toneOf(Thermal thermal) {
    return rowOf(thermals, thermal).tone;
}

} // namespace pacelet
