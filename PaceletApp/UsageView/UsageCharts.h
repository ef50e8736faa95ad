#pragma once

#include "Core/Usage/UsageBuckets.h"
#include "PaceletApp/Monitor/CPUHistory.h"
#include "PaceletApp/UsageView/ChartAxis.h"

#include <QObject>
#include <QPointF>
#include <QString>
#include <QTimeZone>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace pacelet {

/// How much of the history the charts show.
struct UsageRange {
    std::int64_t hours;
    std::int64_t bucketMinutes; ///< what one bar stands for
    std::string_view label;
};

inline constexpr std::array<UsageRange, 3> usageRanges{{
    {24, minutesPerHour, "24 hours"},
    {168, minutesPerDay, "7 days"},
    {720, minutesPerDay, "30 days"},
}};

/// One bar. Its edges are those of the time that it stands for.
struct ChartBar {
    double left = 0;   ///< along the axis of time, 0 to 1
    double right = 0;  ///< the same
    double height = 0; ///< along the axis of values, 0 to 1
    QString value;
    QString time;

    bool operator==(const ChartBar&) const = default;
};

struct BarChart {
    Q_GADGET
    QML_VALUE_TYPE(barChart)
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(QVariantList valueTicks READ valueTickList CONSTANT)

public:
    QString label;
    std::vector<ChartTick> valueTicks;
    std::vector<ChartBar> bars; ///< in order of time

    QVariantList valueTickList() const { return toVariants(valueTicks); }

    bool operator==(const BarChart&) const = default;
};

/// All that the history shows.
struct HistoryCharts {
    BarChart cpu;
    BarChart pressure;
    BarChart swap;
    std::vector<ChartTick> timeTicks;
    ChartSpan span{}; ///< of the axis of time

    bool operator==(const HistoryCharts&) const = default;
};

/// The load of the last ten minutes; both axes run from 0 to 1.
struct LoadCurve {
    Q_GADGET
    QML_VALUE_TYPE(loadCurve)
    Q_PROPERTY(QVariantList valueTicks READ valueTickList CONSTANT)
    Q_PROPERTY(QVariantList timeTicks READ timeTickList CONSTANT)

public:
    std::vector<QPointF> points; ///< in order of time
    std::vector<ChartTick> valueTicks;
    std::vector<ChartTick> timeTicks;

    QVariantList valueTickList() const { return toVariants(valueTicks); }
    QVariantList timeTickList() const { return toVariants(timeTicks); }

    bool operator==(const LoadCurve&) const = default;
};

/// The whole hours or days that hold the range up to `now`.
ChartSpan historySpan(const UsageRange& range, TimePoint now);

/// The records of that stretch as bars; no bars, and no marks either, without any. Bars, like
/// buckets, are hours or days of UTC; words and marks tell the local clock. Figures that no machine
/// can have count as the nearest that it can.
HistoryCharts historyCharts(std::vector<MinuteRecord> records, const UsageRange& range,
                            TimePoint now, const QTimeZone& zone);

/// What stands in place of the charts; empty where they are to be shown.
QString historyNote(bool keepsHistory, const HistoryCharts& charts);

/// The curve up to the latest point. Before the first one there are only the marks of the load.
/// Points that lie after it, which a clock set back leaves behind, are left out.
LoadCurve loadCurve(const CPUHistory& history, const QTimeZone& zone);

} // namespace pacelet
