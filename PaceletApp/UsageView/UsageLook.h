#pragma once

#include "Core/Platform/HostAbilities.h"
#include "Core/Sampling/MemoryStats.h"
#include "Core/Sampling/SystemSignals.h"
#include "Core/Usage/MacInfo.h"
#include "Core/Usage/UpgradeAdvisor.h"
#include "PaceletApp/Components/Look.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <string>
#include <vector>

namespace pacelet {

/// One sentence of the advice, with its glyph.
struct VerdictLine {
    std::string id; ///< what the sentence is about
    QString symbol;
    Tone tone = Tone::None; ///< none for the colour of secondary text
    QString text;
    FixLook fix; ///< empty where none is offered

    const std::string& key() const { return id; }
    /// Roles symbol, tone, text and fix.
    static std::vector<ListRole<VerdictLine>> roles();

    bool operator==(const VerdictLine&) const = default;
};

/// One part of the memory, in the order in which they stand in the bar.
struct MemorySegment {
    QString name;
    QString size;

    std::string key() const { return name.toStdString(); }
    /// Roles name and size.
    static std::vector<ListRole<MemorySegment>> roles();

    bool operator==(const MemorySegment&) const = default;
};

/// The memory as it is now.
struct MemoryLook {
    Q_GADGET
    QML_VALUE_TYPE(memoryLook)
    Q_PROPERTY(bool known MEMBER known CONSTANT)
    Q_PROPERTY(QString headline MEMBER headline CONSTANT)
    Q_PROPERTY(QString accessibleName MEMBER accessibleName CONSTANT)
    Q_PROPERTY(QString pressure MEMBER pressure CONSTANT)
    Q_PROPERTY(pacelet::Tones::Tone pressureTone MEMBER pressureTone CONSTANT)
    Q_PROPERTY(QString swap MEMBER swap CONSTANT)
    Q_PROPERTY(QList<qreal> shares MEMBER shares CONSTANT)

public:
    bool known = false; ///< the fields below are set
    QString headline;
    QString accessibleName;
    QString pressure;
    Tone pressureTone = Tone::None; ///< none for the colour of main text
    QString swap;
    QList<qreal> shares; ///< of the memory's parts, all together 1; in the order of the parts

    bool operator==(const MemoryLook&) const = default;
};

using VerdictListModel = KeyedListModel<VerdictLine>;
using MemoryListModel = KeyedListModel<MemorySegment>;

/// Model, chip, memory and storage of the machine on one line.
QString macLine(const MacInfo& mac, const std::optional<SystemSignals>& signals);

/// The free share of the start-up disk; 1 while it is not known.
double diskFreeShare(const std::optional<SystemSignals>& signals);

std::vector<VerdictLine> verdictLines(const UpgradeVerdict& verdict,
                                      const std::optional<MacInfo>& mac,
                                      const HostAbilities& abilities = {});

/// What the advice rests on.
QString hoursNote(const UpgradeVerdict& verdict);

/// The figure over the live chart: 0% without signals.
QString loadFigure(const std::optional<SystemSignals>& signals);

/// What the live chart says to those who cannot see it.
QString loadDescription(const std::optional<SystemSignals>& signals);

std::vector<MemorySegment> memorySegments(const MemoryBreakdown& memory);

MemoryLook memoryLook(const std::optional<MemoryBreakdown>& memory,
                      const std::optional<SystemSignals>& signals);

} // namespace pacelet
