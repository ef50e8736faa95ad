#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Sampling/SystemSignals.h"
#include "Core/Usage/CauseWatch.h"
#include "PaceletApp/Components/Look.h"
#include "PaceletApp/Components/Tone.h"

#include <QObject>
#include <QString>
#include <QTimeZone>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <span>

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
    bool checked = false; ///< the machine has been measured
    bool hasFinding =
        false; ///< the fields below say which; else headline and detail that all is quiet
    QString symbol;
    QString headline;
    QString detail;
    FixLook fix;
    QString note;

    bool operator==(const HeroLook&) const = default;
};

/// The three readings of the whole machine.
struct ReadingsLook {
    Q_GADGET
    QML_VALUE_TYPE(readingsLook)
    Q_PROPERTY(QString cpuLoad MEMBER cpuLoad CONSTANT)
    Q_PROPERTY(QString pressure MEMBER pressure CONSTANT)
    Q_PROPERTY(pacelet::Tones::Tone pressureTone MEMBER pressureTone CONSTANT)
    Q_PROPERTY(QString memoryInstalled MEMBER memoryInstalled CONSTANT)
    Q_PROPERTY(QString thermal MEMBER thermal CONSTANT)
    Q_PROPERTY(pacelet::Tones::Tone thermalTone MEMBER thermalTone CONSTANT)
    Q_PROPERTY(QString thermalCaption MEMBER thermalCaption CONSTANT)

public:
    QString cpuLoad;
    QString pressure;
    Tone pressureTone = Tone::None;
    QString memoryInstalled;
    QString thermal;
    Tone thermalTone = Tone::None;
    QString thermalCaption;

    bool operator==(const ReadingsLook&) const = default;
};

/// `finding` may be null. Its group is looked for among `groups`.
HeroLook heroLook(bool checked, const Finding* finding, std::span<const ProcessGroup> groups);

/// What stood last, while nothing does now; empty for nothing.
QString earlierLine(const std::optional<Spell>& earlier, const QTimeZone& zone);

/// Dashes for signals that were never read.
ReadingsLook readingsLook(const std::optional<SystemSignals>& signals);

} // namespace pacelet
