#include "PaceletApp/UsageView/CausesModel.h"
#include "tests/PaceletApp/Support/Table.h"
#include "tests/PaceletApp/Support/ToneText.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

/// 2026-03-06 10:20 UTC, a Friday.
constexpr std::int64_t thisMinute = 20518 * minutesPerDay + 620;
const TimePoint thisMoment = fromUnixTime(static_cast<double>(thisMinute) * secondsPerMinute);

TEST(CauseList, TellsHowGraveACauseWasAndWhenItStoodLast) {
    const Table<std::int64_t, Severity, const char*> cases = {
        {0, Severity::low, "neutral 10:20"},        {620, Severity::medium, "amber 00:00"},
        {621, Severity::high, "red Thu 23:59"},     {9259, Severity::critical, "red Sat 00:01"},
        {9260, Severity::low, "neutral Sat 00:00"}, {9261, Severity::low, "neutral 27 Feb"},
        {-820, Severity::low, "neutral 7 Mar"},
    };
    for (const auto& [ago, severity, words] : cases) {
        CauseJournal journal;
        journal.add({thisMinute - ago, journal.placeOf(FindingKind::cpuHog, "id", "Notes"),
                     severity, 60, 90, 99});
        const ChartSpan span{thisMoment - Seconds{7e5}, thisMoment + Seconds{7e5}};
        const auto items = causeList(journal, {span, span, thisMoment, QTimeZone::utc()}, {});
        ASSERT_EQ(items.size(), 1U);
        EXPECT_EQ(toneText(items[0].tone) + u' ' + items[0].last, words);
    }
}

TEST(CausesModel, ShowsTheLongestOfTheBarThatIsPointedAtOrChosen) {
    CauseJournal journal;
    for (std::int64_t ago = 1; ago <= 10; ++ago) {
        const auto cause = journal.placeOf(FindingKind::cpuHog, "", std::to_string(ago));
        journal.add({thisMinute - ago, cause, Severity::low, 60, 90, 99});
    }
    journal.sort();
    HistoryCharts charts;
    charts.span = {thisMoment - Seconds{1200}, thisMoment};
    charts.cpu.bars = {
        {0, 0.5, 1, "", "early"}, {0.5, 0.75, 1, "", "late"}, {0.75, 1, 1, "", "last"}};
    CausesModel causes;
    const auto told = [&] {
        return QStringLiteral("%1 rows, %2%3%4, %5 is chosen")
            .arg(causes.rows()->rowCount())
            .arg(causes.moreTitle(), causes.note(), causes.stretch())
            .arg(causes.chosen());
    };
    causes.setJournal(journal, usageRanges[0], charts, thisMoment);
    EXPECT_EQ(told(), "8 rows, Show 2 more, -1 is chosen");
    causes.showAll();
    EXPECT_EQ(told(), "10 rows, , -1 is chosen");
    const QString none = "Pacelet noted nothing that slowed your Mac then.";
    causes.choose(0);
    EXPECT_EQ(told(), "0 rows, " + none + "early, 0 is chosen");
    causes.point(99);
    EXPECT_EQ(told(), "5 rows, last, 0 is chosen");
    // Read anew, with a bar less.
    charts.cpu.bars.pop_back();
    causes.setJournal(journal, usageRanges[0], charts, thisMoment);
    EXPECT_EQ(told(), "5 rows, late, 0 is chosen");
    causes.point(-1);
    for (const int bar : {2, 1, 1}) {
        causes.choose(bar);
        EXPECT_EQ(causes.chosen(), bar == 1 && causes.from() == 0.5 ? 1 : -1);
    }
    causes.setJournal({}, usageRanges[1], {}, thisMoment);
    EXPECT_EQ(
        told(),
        "0 rows, Pacelet noted nothing that slowed your Mac in the last 7 days., -1 is chosen");
}

} // namespace
} // namespace pacelet
