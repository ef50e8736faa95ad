#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Sampling/SystemSignals.h"
#include "Core/Support/Time.h"
#include "PaceletApp/Components/Look.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace pacelet {

/// What the hero card shows: nothing yet, that all is quiet, or a finding.
struct HeroLook {
    Q_GADGET
    QML_VALUE_TYPE(heroLook)
    Q_PROPERTY(bool checked MEMBER checked CONSTANT)
    Q_PROPERTY(bool hasFinding MEMBER hasFinding CONSTANT)
    Q_PROPERTY(QString symbol MEMBER symbol CONSTANT)
    Q_PROPERTY(QString headline MEMBER headline CONSTANT)
    Q_PROPERTY(QString detail MEMBER detail CONSTANT)
    Q_PROPERTY(pacelet::FixLook fix MEMBER fix CONSTANT)
    Q_PROPERTY(QString note MEMBER note CONSTANT)

public:
    bool checked = false;    ///< the machine has been measured
    bool hasFinding = false; ///< the fields below say which
    QString symbol;
    QString headline;
    QString detail;
    FixLook fix;
    QString note;

    bool operator==(const HeroLook&) const = default;
};

/// The three readings of the whole machine. Tones are those of `PillLook`.
struct ReadingsLook {
    Q_GADGET
    QML_VALUE_TYPE(readingsLook)
    Q_PROPERTY(QString cpuLoad MEMBER cpuLoad CONSTANT)
    Q_PROPERTY(QString pressure MEMBER pressure CONSTANT)
    Q_PROPERTY(QString pressureTone MEMBER pressureTone CONSTANT)
    Q_PROPERTY(QString memoryInstalled MEMBER memoryInstalled CONSTANT)
    Q_PROPERTY(QString thermal MEMBER thermal CONSTANT)
    Q_PROPERTY(QString thermalTone MEMBER thermalTone CONSTANT)
    Q_PROPERTY(QString thermalCaption MEMBER thermalCaption CONSTANT)

public:
    QString cpuLoad;
    QString pressure;
    QString pressureTone;
    QString memoryInstalled;
    QString thermal;
    QString thermalTone;
    QString thermalCaption;

    bool operator==(const ReadingsLook&) const = default;
};

/// `finding` and `group` may be null.
HeroLook heroLook(bool checked, const Finding* finding, const ProcessGroup* group);

/// Dashes for signals that were never read.
ReadingsLook readingsLook(const std::optional<SystemSignals>& signals);

/// "green", "amber" or "red".
QString toneOf(Pressure pressure);
QString toneOf(Thermal thermal);

/// Whole seconds that have passed since `then`; 0 after the clock was set back.
double wholeSecondsSince(TimePoint then, TimePoint now);

/// "Paused", "Checking…" or "Live · checked 3s ago".
QString liveText(bool paused, std::optional<TimePoint> lastChecked, TimePoint now);

} // namespace pacelet
