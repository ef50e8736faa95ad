#include "PaceletApp/UsageView/ChartAxis.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>

namespace pacelet {

namespace {

constexpr int mostSteps = 4;
constexpr std::int64_t minute = 60;
/// What the clocks of all time zones differ by is a multiple of this.
constexpr std::int64_t quarter = 15 * minute;
constexpr std::int64_t day = 86400;

std::int64_t wholeSeconds(TimePoint time) {
    return static_cast<std::int64_t>(std::floor(unixTime(time)));
}

QDateTime local(TimePoint time, const QTimeZone& zone) {
    return QDateTime::fromSecsSinceEpoch(wholeSeconds(time), zone);
}

QString words(const QDateTime& time, const char* format) {
    return QLocale::c().toString(time, QString::fromLatin1(format));
}

TimePoint noon(QDate date, const QTimeZone& zone) {
    const std::int64_t begin = date.startOfDay(zone).toSecsSinceEpoch();
    const std::int64_t end = date.addDays(1).startOfDay(zone).toSecsSinceEpoch();
    return fromUnixTime(static_cast<double>(begin + end) / 2);
}

/// Adds the day where its noon is on the axis.
void addDay(std::vector<ChartTick>& ticks, QDate date, const char* format, const ChartSpan& span,
            const QTimeZone& zone) {
    const double place = span.place(noon(date, zone));
    if (place >= 0 && place <= 1) {
        ticks.push_back({QLocale::c().toString(date, QString::fromLatin1(format)), place});
    }
}

} // namespace

QVariantList toVariants(const std::vector<ChartTick>& ticks) {
    QVariantList list;
    for (const ChartTick& tick : ticks) {
        list.append(QVariant::fromValue(tick));
    }
    return list;
}

ValueAxis valueAxis(double highest) {
    for (double decade = 1;; decade *= 10) {
        for (const double digit : {1.0, 2.0, 2.5, 5.0}) {
            const double step = digit * decade;
            if (step == std::floor(step) && highest <= step * mostSteps) {
                return {step, static_cast<int>(std::ceil(highest / step))};
            }
        }
    }
}

std::vector<ChartTick> valueTicks(const ValueAxis& axis, const QString& unit) {
    std::vector<ChartTick> ticks;
    for (int number = 0; number <= axis.steps; ++number) {
        ticks.push_back({QString::number(axis.step * number, 'f', 0) + unit,
                         static_cast<double>(number) / axis.steps});
    }
    return ticks;
}

std::vector<ChartTick> clockTicks(const ChartSpan& span, Seconds step, const QTimeZone& zone) {
    const auto period = static_cast<std::int64_t>(step.count());
    // Clocks change by whole quarters, so that nothing is missed in between.
    const std::int64_t grain = period % quarter == 0 ? quarter : minute;
    std::vector<ChartTick> ticks;
    std::int64_t time = (wholeSeconds(span.from) / grain) * grain;
    for (; fromUnixTime(static_cast<double>(time)) <= span.to; time += grain) {
        const TimePoint moment = fromUnixTime(static_cast<double>(time));
        const QDateTime clock = local(moment, zone);
        if (moment >= span.from && (clock.time().msecsSinceStartOfDay() / 1000) % period == 0) {
            ticks.push_back({words(clock, "HH:mm"), span.place(moment)});
        }
    }
    return ticks;
}

std::vector<ChartTick> weekdayTicks(const ChartSpan& span, const QTimeZone& zone) {
    const QDate first = local(span.from, zone).date();
    std::vector<ChartTick> ticks;
    for (QDate date = local(span.to - Seconds{1}, zone).date(); date >= first;
         date = date.addDays(-2)) {
        addDay(ticks, date, "ddd", span, zone);
    }
    std::reverse(ticks.begin(), ticks.end());
    return ticks;
}

std::vector<ChartTick> dateTicks(const ChartSpan& span, const QTimeZone& zone) {
    const QDate last = local(span.to, zone).date();
    std::vector<ChartTick> ticks;
    for (QDate date = local(span.from, zone).date(); date <= last; date = date.addDays(1)) {
        const int number = date.day();
        if (number == 1 || number == 10 || number == 20) {
            addDay(ticks, date, "d MMM", span, zone);
        }
    }
    return ticks;
}

QString spanText(const ChartSpan& span, const QTimeZone& zone) {
    const QDateTime from = local(span.from, zone);
    const QDateTime to = local(span.to, zone);
    if (wholeSeconds(span.to) - wholeSeconds(span.from) < day) {
        return words(from, "ddd, HH:mm") + u'–' + words(to, "HH:mm");
    }
    if (from.time() == QTime{0, 0} && to.time() == QTime{0, 0}) {
        return words(from, "ddd d MMM");
    }
    return words(from, "ddd d MMM, HH:mm") + QStringLiteral(" – ") + words(to, "ddd d MMM, HH:mm");
}

} // namespace pacelet
