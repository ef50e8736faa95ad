#include "PaceletApp/OverviewView/OverviewLook.h"

#include "PaceletApp/Components/LiveBadgeModel.h"

#include "PaceletApp/Components/ProcessItem.h"
#include "PaceletApp/OverviewView/CauseItem.h"
#include "tests/PaceletApp/Support/SampleGroup.h"
#include "tests/PaceletApp/Support/Table.h"
#include "tests/PaceletApp/Support/ToneText.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>

namespace pacelet {
namespace {

using namespace std::string_literals;

TEST(LiveText, tellsTheAgeInWholeSecondsAndNeverBelowNone) {
    const std::optional<TimePoint> never;
    const TimePoint now = fromUnixTime(86400);
    const Table<bool, std::optional<TimePoint>, const char*> cases = {
        {false, never, "Checking…"},
        {true, never, "Paused"},
        {true, now - Seconds{10}, "Paused"},
        {false, now - Seconds{9.9}, "Live · checked 9s ago"},
        {false, now + Seconds{10}, "Live · checked 0s ago"},
        {false, now - Seconds{86400}, "Live · checked 86400s ago"},
    };
    for (const auto& [paused, checked, text] : cases) {
        EXPECT_EQ(liveText(paused, checked, now), text);
    }
}

TEST(ReadingsLook, wordsAndTonesFollowTheState) {
    const char* const hot = " macOS reports elevated heat";
    const Table<Pressure, Thermal, std::string> cases = {
        {Pressure::normal, Thermal::normal, "Normal green Normal green Running at full speed"},
        {Pressure::elevated, Thermal::warm, "Elevated amber Warm amber"s + hot},
        {Pressure::critical, Thermal::hot, "Critical red Hot red"s + hot},
        {Pressure::normal, Thermal::veryHot, "Normal green Very hot red"s + hot},
    };
    for (const auto& [pressure, thermal, words] : cases) {
        SystemSignals signals;
        signals.pressure = pressure;
        signals.thermal = thermal;
        signals.cpuLoadPercent = 12.6;
        signals.memoryTotalBytes = std::int64_t{16} << 30;
        const ReadingsLook look = readingsLook(signals);
        const QStringList shown{look.pressure, toneText(look.pressureTone), look.thermal,
                                toneText(look.thermalTone), look.thermalCaption};
        EXPECT_EQ(shown.join(u' ').toStdString(), words);
        EXPECT_EQ(look.cpuLoad + u' ' + look.memoryInstalled, "13% 16 GB installed");
    }
    EXPECT_EQ(readingsLook(std::nullopt).pressure, "—");
}

TEST(ProcessItem, offersQuittingOnlyWhereItIsAllowedAndFits) {
    const Table<bool, std::vector<FixID>, std::optional<std::string>, const char*, const char*>
        cases = {
            {true, {FixID::explain, FixID::quitApp}, "Idles later", "Quit Safari", ""},
            {false, {FixID::quitApp}, "Idles later", "", "Idles later"},
            {false, {FixID::quitApp}, {}, "", ""},
            {true, {FixID::explain}, "Idles later", "", "Idles later"},
            {true, {}, {}, "", ""},
        };
    for (const auto& [quittable, fixes, note, fix, shownNote] : cases) {
        const ProcessGroup group = sampleGroup({sampleUsage(1, "Safari")}, quittable);
        Explanation explanation;
        explanation.fixes = fixes;
        explanation.idleNote = note;
        const ProcessItem item = processItem(group, &explanation);
        EXPECT_EQ(item.fix.title, fix);
        EXPECT_EQ(item.note, shownNote);
    }
}

TEST(ProcessItem, tellsWhatItIsInFigures) {
    ProcessGroup group = sampleGroup({sampleUsage(1, "Safari", 140.25, 3 << 20)}, true);
    group.appPath = "/Applications/Safari.app";
    Explanation explanation;
    explanation.summary = "A web browser.";
    explanation.symbol = "globe";
    explanation.verdict = Verdict::safe;
    ProcessItem item = processItem(group, &explanation);
    const auto written = [&] {
        const QStringList words{item.subtitle, item.cpu, item.memory, item.verdict, item.symbol};
        return words.join(u'|');
    };
    EXPECT_EQ(written(), "A web browser.|140.2%|3 MB|safe|globe");
    EXPECT_EQ(item.appPath, "/Applications/Safari.app");

    group.members.resize(4);
    EXPECT_EQ(processItem(group, &explanation).subtitle, "A web browser. · 3 helpers");

    item = processItem(group, nullptr);
    EXPECT_EQ(written(), " · 3 helpers|140.2%|3 MB||gearshape");
    EXPECT_EQ(item.fix, FixLook{});
}

TEST(Causes, leadToTheirGroupAsLongAsItRuns) {
    const ProcessGroup group = sampleGroup({sampleUsage(7, "Safari")}, true);
    const auto about = [](FixID fix, std::optional<std::string> groupID) {
        Finding::Fields fields;
        fields.kind = FindingKind::cpuHog;
        fields.severity = Severity::high;
        fields.headline = "A cause.";
        fields.primaryFix = fix;
        fields.groupID = std::move(groupID);
        return Finding{std::move(fields)};
    };
    const Finding running = about(FixID::quitApp, group.id);
    EXPECT_EQ(heroLook(true, &running, {&group, 1}).fix.title, "Quit Safari");
    EXPECT_TRUE(heroLook(true, &running, {&group, 1}).hasFinding);
    EXPECT_EQ(causeItem(running, {&group, 1}).fix.title, "Quit Safari");
    EXPECT_TRUE(causeItem(running, {&group, 1}).grave);
    EXPECT_EQ(groupOf(running, {}), nullptr);
    EXPECT_EQ(groupOf(about(FixID::restartMac, {}), {&group, 1}), nullptr);
    EXPECT_EQ(heroLook(false, &running, {&group, 1}), HeroLook{}) << "nothing before a check";

    const Cause memory{FindingKind::memory, "/Applications/Safari.app", "Safari"};
    for (const auto& [cause, line] : {std::pair{Cause{FindingKind::spotlight, "", ""}, "Spotlight"},
                                      std::pair{memory, "low memory"}}) {
        const Spell spell{cause, fromUnixTime(14 * 3600 + 32 * 60 + 59), Seconds{730}};
        EXPECT_EQ(earlierLine(spell, QTimeZone::utc()).toStdString(),
                  fmt::format("Earlier: {}, 12 minutes, until 14:32.", line));
    }
    EXPECT_EQ(earlierLine({}, QTimeZone::utc()), QString{});
    EXPECT_EQ(moreCausesLabel(0) + moreCausesLabel(1) + moreCausesLabel(4),
              "And 1 more causeAnd 4 more causes");
}

} // namespace
} // namespace pacelet
