#pragma once

#include "Core/Support/Time.h"

#include <QObject>
#include <QString>
#include <QTimeZone>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace pacelet {

/// A mark on an axis with its label.
struct ChartTick {
    Q_GADGET
    QML_VALUE_TYPE(chartTick)
    Q_PROPERTY(QString text MEMBER text CONSTANT)
    Q_PROPERTY(double place MEMBER place CONSTANT)

public:
    QString text;
    double place = 0; ///< along the axis, 0 to 1

    bool operator==(const ChartTick&) const = default;
};

/// For QML, whose lists hold values of any type.
QVariantList toVariants(const std::vector<ChartTick>& ticks);

/// The stretch of time that an axis shows.
struct ChartSpan {
    TimePoint from{};
    TimePoint to{}; ///< later than `from`

    /// Where a moment lies along the axis: 0 to 1 within the stretch.
    double place(TimePoint time) const { return (time - from) / (to - from); }

    bool operator==(const ChartSpan&) const = default;
};

/// An axis from 0 in a few even steps, each a whole number that is easy to read.
struct ValueAxis {
    double step = 1;
    int steps = 1;

    double top() const { return step * steps; }

    bool operator==(const ValueAxis&) const = default;
};

/// The shortest axis that reaches `highest`, which is finite and 1 or more.
ValueAxis valueAxis(double highest);

/// The steps of an axis as whole numbers, each directly followed by `unit`.
std::vector<ChartTick> valueTicks(const ValueAxis& axis, const QString& unit);

/// The moments at which the local clock shows a multiple of `step` since midnight, as "14:06".
/// `step` is a whole number of minutes.
std::vector<ChartTick> clockTicks(const ChartSpan& span, Seconds step, const QTimeZone& zone);

/// Every second local day, counted back from the last one, by its name; it is marked at noon.
std::vector<ChartTick> weekdayTicks(const ChartSpan& span, const QTimeZone& zone);

/// Three local days a month, about ten days apart, by their date; they are marked at noon.
std::vector<ChartTick> dateTicks(const ChartSpan& span, const QTimeZone& zone);

/// The stretch in words, by the local clock: "Fri, 14:00–15:00", "Fri 6 Mar" for a whole day, and
/// otherwise both ends in full.
QString spanText(const ChartSpan& span, const QTimeZone& zone);

} // namespace pacelet
