#include "PaceletApp/UsageView/UsageCharts.h"

#include "Core/Sampling/Format.h"
#include "PaceletApp/Support/QtText.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace pacelet {

namespace {

constexpr double fullLoad = 100;
constexpr double binaryGB = 1024.0 * 1024 * 1024;

constexpr ValueAxis loadAxis{50, 2};
constexpr Seconds liveTickStep{120};
constexpr Seconds hourTickStep{6 * 3600};

/// How a chart reads a bucket.
struct Measure {
    std::string_view label;
    std::string_view unit;
    double least; ///< the axis reaches this value at least
    double (*value)(const UsageBucket&);
    std::string (*words)(const UsageBucket&);
};

/// A file that was tampered with may hold any number.
double percentage(double value) {
    return value > 0 ? std::min(value, fullLoad) : 0;
}

double cpuOf(const UsageBucket& bucket) {
    return percentage(bucket.cpu);
}

double pressureOf(const UsageBucket& bucket) {
    return bucket.pressureShare * fullLoad;
}

double swapOf(const UsageBucket& bucket) {
    return std::max(0.0, static_cast<double>(bucket.swap) / binaryGB);
}

constexpr Measure cpuMeasure{"Average CPU load", "%", 10, cpuOf,
                             [](const UsageBucket& each) { return Format::percent(cpuOf(each)); }};
constexpr Measure pressureMeasure{
    "Time under memory pressure", "%", 10, pressureOf,
    [](const UsageBucket& each) { return Format::percent(pressureOf(each)); }};
constexpr Measure swapMeasure{"Swap", " GB", 1, swapOf, [](const UsageBucket& each) {
                                  return Format::bytes(std::max<std::int64_t>(0, each.swap));
                              }};

BarChart chart(std::span<const UsageBucket> buckets, const Measure& measure, Seconds width,
               const ChartSpan& span, const QTimeZone& zone) {
    double highest = measure.least;
    for (const UsageBucket& each : buckets) {
        highest = std::max(highest, measure.value(each));
    }
    const ValueAxis axis = valueAxis(highest);
    BarChart result;
    result.label = qtText(measure.label);
    result.valueTicks = valueTicks(axis, qtText(measure.unit));
    for (const UsageBucket& each : buckets) {
        const ChartSpan time{each.start, each.start + width};
        result.bars.push_back({span.place(time.from), span.place(time.to),
                               measure.value(each) / axis.top(), qtText(measure.words(each)),
                               spanText(time, zone)});
    }
    return result;
}

std::vector<ChartTick> timeTicks(const UsageRange& range, const ChartSpan& span,
                                 const QTimeZone& zone) {
    if (range.bucketMinutes == minutesPerHour) {
        return clockTicks(span, hourTickStep, zone);
    }
    return range.hours == usageRanges[1].hours ? weekdayTicks(span, zone) : dateTicks(span, zone);
}

Seconds bucketWidth(const UsageRange& range) {
    return Seconds{static_cast<double>(range.bucketMinutes) * secondsPerMinute};
}

/// Leaves the records that lie in the stretch. Those after it, which a clock set back leaves
/// behind, have no place on its axis.
void keepWithin(std::vector<MinuteRecord>& records, const ChartSpan& span) {
    const auto first = static_cast<std::int64_t>(unixTime(span.from) / secondsPerMinute);
    const auto end = static_cast<std::int64_t>(unixTime(span.to) / secondsPerMinute);
    std::erase_if(records,
                  [&](const MinuteRecord& each) { return each.t < first || each.t >= end; });
}

} // namespace

ChartSpan historySpan(const UsageRange& range, TimePoint now) {
    const Seconds width = bucketWidth(range);
    const auto begin = now - Seconds{static_cast<double>(range.hours) * 3600};
    return {fromUnixTime(std::floor(unixTime(begin) / width.count()) * width.count()),
            fromUnixTime((std::floor(unixTime(now) / width.count()) + 1) * width.count())};
}

HistoryCharts historyCharts(std::vector<MinuteRecord> records, const UsageRange& range,
                            TimePoint now, const QTimeZone& zone) {
    const ChartSpan span = historySpan(range, now);
    keepWithin(records, span);
    const auto buckets = UsageBuckets::bucket(records, range.bucketMinutes);
    if (buckets.empty()) {
        return {};
    }
    const Seconds width = bucketWidth(range);
    return {chart(buckets, cpuMeasure, width, span, zone),
            chart(buckets, pressureMeasure, width, span, zone),
            chart(buckets, swapMeasure, width, span, zone), timeTicks(range, span, zone), span};
}

QString historyNote(bool keepsHistory, const HistoryCharts& charts) {
    if (!keepsHistory) {
        return QStringLiteral("Usage history is off. Turn it on in Settings.");
    }
    if (charts.cpu.bars.empty()) {
        return QStringLiteral("Pacelet records one line a minute while it runs. Check back soon.");
    }
    return {};
}

LoadCurve loadCurve(const CPUHistory& history, const QTimeZone& zone) {
    LoadCurve curve;
    curve.valueTicks = valueTicks(loadAxis, QStringLiteral("%"));
    if (history.empty()) {
        return curve;
    }
    const TimePoint last = history.back().date;
    const ChartSpan span{last - cpuHistoryLength, last};
    for (const CPUPoint& each : history) {
        if (each.date <= last) {
            curve.points.emplace_back(span.place(each.date), percentage(each.load) / fullLoad);
        }
    }
    const auto earlier = [](const QPointF& left, const QPointF& right) {
        return left.x() < right.x();
    };
    std::stable_sort(curve.points.begin(), curve.points.end(), earlier);
    curve.timeTicks = clockTicks(span, liveTickStep, zone);
    return curve;
}

} // namespace pacelet
