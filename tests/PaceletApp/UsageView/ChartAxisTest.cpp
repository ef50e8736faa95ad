#include "PaceletApp/UsageView/ChartAxis.h"
#include "tests/PaceletApp/Support/Table.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

namespace pacelet {
namespace {

constexpr double hour = 3600;
constexpr double secondsADay = 86400;
/// 2026-03-06 00:00 UTC, a Friday.
constexpr double friday = 20518 * secondsADay;

const QTimeZone universal = QTimeZone::utc();

ChartSpan span(double from, double to) {
    return {fromUnixTime(from), fromUnixTime(to)};
}

/// Ticks as "text at the hours since the start".
std::string written(const std::vector<ChartTick>& ticks, const ChartSpan& span) {
    QStringList texts;
    for (const ChartTick& tick : ticks) {
        const double hours = tick.place * (span.to - span.from).count() / hour;
        texts << tick.text + u' ' + QString::number(hours, 'g', 3);
    }
    return texts.join(u", ").toStdString();
}

TEST(ValueAxis, HasAFewStepsThatAreEasyToRead) {
    const Table<double, const char*> cases = {
        {10, "0% 5% 10% "},
        {12, "0% 5% 10% 15% "},
        {33, "0% 10% 20% 30% 40% "},
        {80, "0% 20% 40% 60% 80% "},
        {1, "0% 1% "},
        {81, "0% 25% 50% 75% 100% "},
        {2.2, "0% 1% 2% 3% "},
        {900, "0% 250% 500% 750% 1000% "},
    };
    for (const auto& [highest, labels] : cases) {
        const auto ticks = valueTicks(valueAxis(highest), QStringLiteral("%"));
        std::string shown;
        for (const ChartTick& tick : ticks) {
            shown += tick.text.toStdString() + " ";
        }
        EXPECT_EQ(ticks.back().place, 1);
        EXPECT_EQ(shown, labels) << highest;
    }
}

RC_GTEST_PROP(ValueAxis, ReachesEveryValueAndWastesNoStep, (std::uint64_t bytes)) {
    const double highest = std::max(1.0, static_cast<double>(bytes) / 1e6);
    const ValueAxis axis = valueAxis(highest);
    RC_ASSERT(axis.top() >= highest && axis.steps >= 1 && axis.steps <= 4);
    RC_ASSERT(axis.step == std::floor(axis.step));
    RC_ASSERT(axis.steps == 1 || axis.top() - axis.step < highest);
}

TEST(ClockTicks, FollowTheLocalClock) {
    const double november =
        20393 * secondsADay; // 2025-11-01, the secondsADay before the clocks of New York change
    const double noon = november + 16 * hour;
    const QTimeZone newYork{"America/New_York"};
    const Table<double, double, double, QTimeZone, const char*> cases = {
        {friday, friday + secondsADay, 6, universal,
         "00:00 0, 06:00 6, 12:00 12, 18:00 18, 00:00 24"},
        {friday + 9 * hour, friday + 30 * hour, 6, universal,
         "12:00 3, 18:00 9, 00:00 15, 06:00 21"},
        {friday, friday + 12 * hour, 6, QTimeZone{5 * 3600 + 1800}, "06:00 0.5, 12:00 6.5"},
        {friday, friday + 12 * hour, 6, QTimeZone{-8 * 3600}, "18:00 2, 00:00 8"},
        // That night is 25 hours long.
        {noon, noon + 25 * hour, 6, newYork, "12:00 0, 18:00 6, 00:00 12, 06:00 19, 12:00 25"},
        {friday + 30, friday + 270, 2 / 60.0, universal, "00:02 0.025, 00:04 0.0583"},
        {friday + 30.5, friday + 90.5, 2 / 60.0, universal, ""},
    };
    for (const auto& [from, to, step, zone, ticks] : cases) {
        const ChartSpan shown = span(from, to);
        EXPECT_EQ(written(clockTicks(shown, Seconds{step * hour}, zone), shown), ticks);
    }
}

TEST(DayTicks, NameLocalDaysAtTheirNoon) {
    const ChartSpan week = span(friday - 7 * secondsADay, friday + secondsADay);
    const ChartSpan month = span(friday - 26 * secondsADay, friday + 5 * secondsADay);
    // In the east the last local secondsADay of the week has begun, but its noon lies ahead.
    const Table<int, const char*, const char*> cases = {
        {0, "Sat 36, Mon 84, Wed 132, Fri 180", "10 Feb 60, 20 Feb 300, 1 Mar 516, 10 Mar 732"},
        {-5, "Sat 41, Mon 89, Wed 137, Fri 185", "10 Feb 65, 20 Feb 305, 1 Mar 521, 10 Mar 737"},
        {11, "Fri 1, Sun 49, Tue 97, Thu 145", "10 Feb 49, 20 Feb 289, 1 Mar 505, 10 Mar 721"},
        // The axis begins and ends at a noon.
        {12, "Fri 0, Sun 48, Tue 96, Thu 144, Sat 192",
         "10 Feb 48, 20 Feb 288, 1 Mar 504, 10 Mar 720"},
    };
    for (const auto& [hours, days, dates] : cases) {
        const QTimeZone zone{hours * 3600};
        EXPECT_EQ(written(weekdayTicks(week, zone), week), days);
        EXPECT_EQ(written(dateTicks(month, zone), month), dates);
    }
}

TEST(SpanText, NamesWholeDaysAndGivesOtherEndsInFull) {
    const Table<double, double, int, const char*> cases = {
        {friday + 14 * hour, friday + 15 * hour, 0, "Fri, 14:00–15:00"},
        {friday + 23 * hour, friday + 24 * hour, 0, "Fri, 23:00–00:00"},
        {friday + 23 * hour, friday + 24 * hour, 1800, "Fri, 23:30–00:30"},
        {friday, friday + secondsADay, 0, "Fri 6 Mar"},
        {friday, friday + secondsADay, -5 * 3600, "Thu 5 Mar, 19:00 – Fri 6 Mar, 19:00"},
    };
    for (const auto& [from, to, offset, text] : cases) {
        EXPECT_EQ(spanText(span(from, to), QTimeZone{offset}), text);
    }
}

} // namespace
} // namespace pacelet
