#pragma once

#include "Core/Sampling/SystemSignals.h"

#include <QString>

namespace pacelet {

/// "green", "amber" or "red".
QString toneOf(Pressure pressure);
QString toneOf(Thermal thermal);

} // namespace pacelet
