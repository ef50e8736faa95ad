#include "PaceletApp/Components/Tone.h"

#include "Core/Support/EnumTable.h"
#include "PaceletApp/Support/QtText.h"

#include <array>

namespace pacelet {

namespace {

struct PressureRow {
    Pressure value;
    std::string_view tone;
};
constexpr std::array<PressureRow, 3> pressures{{
    {Pressure::normal, "green"},
    {Pressure::elevated, "amber"},
    {Pressure::critical, "red"},
}};

struct ThermalRow {
    Thermal value;
    std::string_view tone;
};
constexpr std::array<ThermalRow, 4> thermals{{
    {Thermal::normal, "green"},
    {Thermal::warm, "amber"},
    {Thermal::hot, "red"},
    {Thermal::veryHot, "red"},
}};

} // namespace

QString toneOf(Pressure pressure) {
    return qtText(rowOf(pressures, pressure).tone);
}

QString toneOf(Thermal thermal) {
    return qtText(rowOf(thermals, thermal).tone);
}

} // namespace pacelet
