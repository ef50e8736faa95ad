#include "PaceletApp/UsageView/ChartAxis.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace pacelet {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double hour = 3600;
constexpr double day = 86400;
/// 2026-03-06 00:00 UTC, a Friday.
constexpr double friday = 20518 * day;

const QTimeZone utc = QTimeZone::utc();

ChartSpan span(double from, double to) {
    return {fromUnixTime(from), fromUnixTime(to)};
}

/// Ticks as "text at the hours since the start".
std::vector<std::string> written(const std::vector<ChartTick>& ticks, const ChartSpan& span) {
    std::vector<std::string> texts;
    for (const ChartTick& tick : ticks) {
        const double hours = tick.place * (span.to - span.from).count() / hour;
        texts.push_back(tick.text.toStdString() + " " +
                        QString::number(hours, 'g', 6).toStdString());
    }
    return texts;
}

TEST(ValueAxis, HasAFewStepsThatAreEasyToRead) {
    struct Case {
        double highest;
        double least;
        const char* labels;
    };
    const Case cases[] = {
        {0, 10, "0% 5% 10%"},
        {8, 10, "0% 5% 10%"},
        {12, 10, "0% 5% 10% 15%"},
        {33, 10, "0% 10% 20% 30% 40%"},
        {80, 10, "0% 20% 40% 60% 80%"},
        {81, 10, "0% 25% 50% 75% 100%"},
        {100, 10, "0% 25% 50% 75% 100%"},
        {0, 1, "0% 1%"},
        {2.2, 1, "0% 1% 2% 3%"},
        {9, 1, "0% 5% 10%"},
        {900, 1, "0% 250% 500% 750% 1000%"},
    };
    for (const Case& each : cases) {
        std::string labels;
        for (const ChartTick& tick :
             valueTicks(valueAxis(each.highest, each.least), QStringLiteral("%"))) {
            labels += (labels.empty() ? "" : " ") + tick.text.toStdString();
        }
        EXPECT_EQ(labels, each.labels) << each.highest;
    }
}

RC_GTEST_PROP(ValueAxis, ReachesEveryValueAndWastesNoStep, (std::uint64_t bytes)) {
    const double highest = static_cast<double>(bytes) / 1e6;
    const ValueAxis axis = valueAxis(highest, 1);
    RC_ASSERT(axis.top() >= highest && axis.steps >= 1 && axis.steps <= 4);
    RC_ASSERT(axis.step == std::floor(axis.step));
    RC_ASSERT(axis.steps == 1 || axis.top() - axis.step < highest);
}

TEST(ClockTicks, FollowTheLocalClock) {
    struct Case {
        ChartSpan span;
        double step;
        QTimeZone zone;
        std::vector<std::string> ticks;
    };
    const double november = 20393 * day; // 2025-11-01, the day before the clocks of New York change
    const Case cases[] = {
        {span(friday, friday + day),
         6 * hour,
         utc,
         {"00:00 0", "06:00 6", "12:00 12", "18:00 18", "00:00 24"}},
        {span(friday + 9 * hour, friday + 34 * hour),
         6 * hour,
         utc,
         {"12:00 3", "18:00 9", "00:00 15", "06:00 21"}},
        {span(friday, friday + day),
         6 * hour,
         QTimeZone{5 * 3600 + 1800},
         {"06:00 0.5", "12:00 6.5", "18:00 12.5", "00:00 18.5"}},
        {span(friday, friday + day),
         6 * hour,
         QTimeZone{-8 * 3600},
         {"18:00 2", "00:00 8", "06:00 14", "12:00 20"}},
        // That night is 25 hours long.
        {span(november + 16 * hour, november + 41 * hour),
         6 * hour,
         QTimeZone{"America/New_York"},
         {"12:00 0", "18:00 6", "00:00 12", "06:00 19", "12:00 25"}},
        {span(friday + 30, friday + 630),
         120,
         utc,
         {"00:02 0.025", "00:04 0.0583333", "00:06 0.0916667", "00:08 0.125", "00:10 0.158333"}},
        {span(friday + 30.5, friday + 90.5), 120, utc, {}},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(written(clockTicks(each.span, Seconds{each.step}, each.zone), each.span),
                  each.ticks);
    }
}

TEST(DayTicks, NameLocalDaysAtTheirNoon) {
    const ChartSpan week = span(friday - 7 * day, friday + day);
    EXPECT_THAT(written(weekdayTicks(week, utc), week),
                ElementsAre("Sat 36", "Mon 84", "Wed 132", "Fri 180"));
    EXPECT_THAT(written(weekdayTicks(week, QTimeZone{-5 * 3600}), week),
                ElementsAre("Sat 41", "Mon 89", "Wed 137", "Fri 185"));
    // The last local day has begun, but its noon lies ahead.
    EXPECT_THAT(written(weekdayTicks(week, QTimeZone{11 * 3600}), week),
                ElementsAre("Fri 1", "Sun 49", "Tue 97", "Thu 145"));

    const ChartSpan month = span(friday - 30 * day, friday + day);
    EXPECT_THAT(written(dateTicks(month, utc), month),
                ElementsAre("10 Feb 156", "20 Feb 396", "1 Mar 612"));
    EXPECT_THAT(written(dateTicks(month, QTimeZone{9 * 3600}), month),
                ElementsAre("10 Feb 147", "20 Feb 387", "1 Mar 603"));
}

TEST(SpanText, NamesWholeDaysAndGivesOtherEndsInFull) {
    struct Case {
        double from;
        double to;
        int offset;
        const char* text;
    };
    const Case cases[] = {
        {friday + 14 * hour, friday + 15 * hour, 0, "Fri, 14:00–15:00"},
        {friday + 23 * hour, friday + 24 * hour, 0, "Fri, 23:00–00:00"},
        {friday + 23 * hour, friday + 24 * hour, 1800, "Fri, 23:30–00:30"},
        {friday, friday + day, 0, "Fri 6 Mar"},
        {friday, friday + day, -5 * 3600, "Thu 5 Mar, 19:00 – Fri 6 Mar, 19:00"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(spanText(span(each.from, each.to), QTimeZone{each.offset}), each.text);
    }
}

} // namespace
} // namespace pacelet
