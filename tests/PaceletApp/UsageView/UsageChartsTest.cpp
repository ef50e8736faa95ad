#include "PaceletApp/UsageView/UsageCharts.h"
#include "tests/PaceletApp/Support/Table.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace pacelet {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t gib = std::int64_t{1} << 30;
/// 2026-03-06 10:20 UTC, a Friday.
constexpr std::int64_t now = 20518 * minutesPerDay + 620;
const TimePoint nowTime = fromUnixTime(static_cast<double>(now) * secondsPerMinute);

const UsageRange& day = usageRanges[0];
const UsageRange& week = usageRanges[1];
const UsageRange& month = usageRanges[2];
const QTimeZone utc = QTimeZone::utc();

/// Records of the minutes before `now`, one each, all alike.
std::vector<MinuteRecord> steady(std::int64_t minutes, const MinuteRecord& like) {
    std::vector<MinuteRecord> records;
    for (std::int64_t minute = now - minutes; minute < now; ++minute) {
        records.push_back(like);
        records.back().t = minute;
    }
    return records;
}

HistoryCharts charts(std::vector<MinuteRecord> records, const UsageRange& range = day) {
    return historyCharts(std::move(records), range, nowTime, utc);
}

TEST(HistoryCharts, TellLoadPressureAndSwapOfEachHour) {
    std::vector<MinuteRecord> records = steady(80, {.cpu = 20, .swap = 3 * gib / 2});
    for (std::size_t minute = 0; minute < 15; ++minute) {
        records[minute].pressure = 1 + static_cast<std::int64_t>(minute % 2);
    }
    records.back().cpu = 41;
    records.back().swap = gib / 4;
    const HistoryCharts shown = charts(records);

    // The axis runs from 10 o'clock of the day before to 11: 25 hours.
    ASSERT_THAT(shown.cpu.bars, SizeIs(2));
    EXPECT_EQ(shown.cpu.bars[0].left, 23.0 / 25);
    EXPECT_EQ(shown.cpu.bars[0].right, 24.0 / 25);
    EXPECT_EQ(shown.cpu.bars[1].right, 1);
    EXPECT_EQ(shown.cpu.bars[0].time, "Fri, 09:00–10:00");
    const auto written = [](const BarChart& chart) {
        QStringList words{chart.valueTicks.back().text};
        for (const ChartBar& bar : chart.bars) {
            words << bar.value << QString::number(bar.height, 'g', 4);
        }
        return words.join(u' ').toStdString();
    };
    EXPECT_EQ(written(shown.cpu), "30% 20% 0.6667 21% 0.7017");
    EXPECT_EQ(written(shown.pressure), "30% 25% 0.8333 0% 0");
    EXPECT_EQ(written(shown.swap), "2 GB 1.5 GB 0.75 1.5 GB 0.75");
    EXPECT_EQ(shown.timeTicks.front().text, "12:00");

    const HistoryCharts idle = charts(steady(1, {.cpu = 0.6}), week);
    EXPECT_EQ(written(idle.cpu), "10% 1% 0.06");
    EXPECT_EQ(written(idle.pressure), "10% 0% 0");
    EXPECT_EQ(written(idle.swap), "1 GB 0 KB 0");
    EXPECT_EQ(idle.timeTicks.front().text, "Sat");
    EXPECT_EQ(charts(steady(1, {}), month).timeTicks.front().text, "10 Feb");
}

TEST(HistoryCharts, HoldTheWholeRangeAndNothingElse) {
    constexpr std::int64_t tooGreat = std::numeric_limits<std::int64_t>::max();
    const Table<UsageRange, std::int64_t, double> cases = {
        {day, now - 1460, 0},     {day, now, 24},
        {day, now + 39, 24},      {day, now + 40, -1},
        {day, tooGreat, -1},      {week, now - 10'080, 0},
        {week, now, 7},           {week, tooGreat, -1},
        {month, now - 43'200, 0}, {month, now - 43'200 + 820, 1},
        {month, now, 30},         {month, now + 820, -1}};
    for (const auto& [range, minute, left] : cases) {
        const HistoryCharts shown = charts({{.t = minute, .cpu = 5, .n = 1}}, range);
        const double slots = range.hours == 24 ? 25 : double(range.hours) / 24 + 1;
        if (left < 0) {
            EXPECT_EQ(shown, HistoryCharts{}) << minute;
        } else {
            ASSERT_THAT(shown.cpu.bars, SizeIs(1)) << minute;
            EXPECT_NEAR(shown.cpu.bars[0].left * slots, left, 1e-9) << minute;
            EXPECT_NEAR(shown.cpu.bars[0].right * slots, left + 1, 1e-9) << minute;
        }
    }
    EXPECT_THAT(charts(steady(11'520, {}), week).swap.bars, SizeIs(8));
    EXPECT_EQ(historySpan(day, fromUnixTime(86400)).from, fromUnixTime(0));
}

TEST(HistoryCharts, BearBrokenFigures) {
    constexpr double huge = std::numeric_limits<double>::max();
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    for (const auto& [cpu, figure] : Table<double, std::int64_t>{{huge, most}, {-huge, -most}}) {
        auto records = steady(3, {.cpu = cpu, .pressure = figure, .swap = figure});
        records[1].cpu = -cpu; // two sums without a value meet
        const HistoryCharts shown = charts(records);
        for (const BarChart* chart : {&shown.cpu, &shown.pressure, &shown.swap}) {
            EXPECT_TRUE(chart->bars[0].height >= 0 && chart->bars[0].height <= 1);
        }
    }
}

TEST(HistoryNote, SaysWhyThereIsNothing) {
    const HistoryCharts some = charts(steady(1, {}));
    EXPECT_EQ(historyNote(true, some), "");
    for (const HistoryCharts& each : {some, HistoryCharts{}}) {
        EXPECT_EQ(historyNote(false, each), "Usage history is off. Turn it on in Settings.");
    }
    EXPECT_EQ(historyNote(true, {}),
              "Pacelet records one line a minute while it runs. Check back soon.");
}

TEST(LoadCurve, EndsAtTheLatestPoint) {
    EXPECT_THAT(loadCurve({}, utc).points, IsEmpty());
    EXPECT_THAT(loadCurve({}, utc).valueTicks, SizeIs(3));
    const LoadCurve begun = loadCurve({{nowTime, 50}}, utc);
    EXPECT_THAT(begun.points, ElementsAre(QPointF(1, 0.5)));
    EXPECT_THAT(begun.timeTicks, SizeIs(6));
    EXPECT_EQ(begun.timeTicks.front().text, "10:10");
    // The clock was set back by 100 seconds before the last two points.
    const CPUHistory history{{nowTime - Seconds{60}, 100},
                             {nowTime, 250},
                             {nowTime - Seconds{90}, -3},
                             {nowTime - Seconds{30}, 20}};
    EXPECT_THAT(loadCurve(history, utc).points,
                ElementsAre(QPointF(0.9, 0), QPointF(0.95, 1), QPointF(1, 0.2)));
}

RC_GTEST_PROP(LoadCurve, StaysWithinItsAxes,
              (const std::vector<std::pair<std::int16_t, double>>& steps)) {
    CPUHistory history;
    for (const auto& [seconds, load] : steps) {
        addPoint(history, {nowTime + Seconds{double(seconds)}, load});
    }
    const LoadCurve curve = loadCurve(history, utc);
    RC_ASSERT(curve.points.empty() == history.empty());
    for (std::size_t each = 0; each < curve.points.size(); ++each) {
        const QPointF& point = curve.points[each];
        RC_ASSERT(point.x() >= 0 && point.x() <= 1 && point.y() >= 0 && point.y() <= 1);
        // The macro takes its expression apart, and would look at both sides of an "or".
        const bool rises = each == 0 || curve.points[each - 1].x() <= point.x();
        RC_ASSERT(rises);
    }
}

} // namespace
} // namespace pacelet
