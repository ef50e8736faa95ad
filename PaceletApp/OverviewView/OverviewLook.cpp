#include "PaceletApp/OverviewView/OverviewLook.h"

#include "Core/Sampling/Format.h"
#include "Core/Support/EnumTable.h"
#include "PaceletApp/Support/QtText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

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

HeroLook heroLook(bool checked, const Finding* finding, const ProcessGroup* group) {
    HeroLook look;
    look.checked = checked;
    if (!checked || finding == nullptr) {
        return look;
    }
    look.hasFinding = true;
    look.symbol = qtText(symbol(finding->kind()));
    look.headline = qtText(finding->headline());
    look.detail = qtText(finding->detail());
    if (finding->primaryFix()) {
        look.fix = lookOf(*finding->primaryFix(), group);
    }
    look.note = qtText(finding->leaveNote().value_or(""));
    return look;
}

ReadingsLook readingsLook(const std::optional<SystemSignals>& signals) {
    ReadingsLook look;
    if (!signals) {
        look.cpuLoad = look.pressure = look.thermal = QStringLiteral("—");
        look.pressureTone = look.thermalTone = QStringLiteral("neutral");
        return look;
    }
    look.cpuLoad = qtText(Format::percent(signals->cpuLoadPercent));
    look.pressure = qtText(label(signals->pressure));
    look.pressureTone = toneOf(signals->pressure);
    look.memoryInstalled = qtText(Format::bytes(signals->memoryTotalBytes) + " installed");
    look.thermal = qtText(label(signals->thermal));
    look.thermalTone = toneOf(signals->thermal);
    look.thermalCaption =
        qtText(signals->thermal == Thermal::normal ? "Running at full speed"
                                                   : "macOS reports elevated heat");
    return look;
}

double wholeSecondsSince(TimePoint then, TimePoint now) {
    return std::max(0.0, std::trunc((now - then).count()));
}

QString liveText(bool paused, std::optional<TimePoint> lastChecked, TimePoint now) {
    if (paused) {
        return QStringLiteral("Paused");
    }
    if (!lastChecked) {
        return QStringLiteral("Checking…");
    }
    return qtText(fmt::format("Live · checked {:.0f}s ago", wholeSecondsSince(*lastChecked, now)));
}

} // namespace pacelet
