#pragma once

#include "Core/Diagnosis/Finding.h"
#include "PaceletApp/Monitor/Monitor.h"

#include <QColor>
#include <QIcon>
#include <QString>

namespace pacelet {

/// The coloured dot that tells the state of the machine at a glance.
namespace StatusDot {

/// What the dot shows: no alarm before anything was measured.
Status status(const Monitor& monitor);

QColor color(Status status);

/// "Pacelet status: " and the state in words.
QString accessibleName(Status status);

/// The dot at the sizes of trays. Each is drawn once.
const QIcon& icon(Status status);

} // namespace StatusDot

} // namespace pacelet
