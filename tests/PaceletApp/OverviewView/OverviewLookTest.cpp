#include "PaceletApp/OverviewView/OverviewLook.h"

#include "PaceletApp/OverviewView/CauseItem.h"
#include "PaceletApp/OverviewView/ProcessItem.h"

#include <gtest/gtest.h>

#include <cmath>

namespace pacelet {
namespace {

TEST(LiveText, tellsTheAgeInWholeSecondsAndNeverBelowNone) {
    struct Case {
        bool paused;
        std::optional<double> checked;
        double now;
        const char* text;
    };
    const Case cases[] = {
        {false, {}, 100, "Checking…"},
        {true, {}, 100, "Paused"},
        {true, 90, 100, "Paused"},
        {false, 100, 100, "Live · checked 0s ago"},
        {false, 90.1, 100, "Live · checked 9s ago"},
        {false, 110, 100, "Live · checked 0s ago"},
        {false, 0, 86400, "Live · checked 86400s ago"},
    };
    for (const Case& each : cases) {
        std::optional<TimePoint> checked;
        if (each.checked) {
            checked = fromUnixTime(*each.checked);
        }
        EXPECT_EQ(liveText(each.paused, checked, fromUnixTime(each.now)), each.text);
    }
}

TEST(ReadingsLook, wordsAndTonesFollowTheState) {
    struct Case {
        Pressure pressure;
        Thermal thermal;
        const char* words;
    };
    const Case cases[] = {
        {Pressure::normal, Thermal::normal, "Normal green Normal green Running at full speed"},
        {Pressure::elevated, Thermal::warm,
         "Elevated amber Warm amber macOS reports elevated heat"},
        {Pressure::critical, Thermal::hot, "Critical red Hot red macOS reports elevated heat"},
        {Pressure::normal, Thermal::veryHot,
         "Normal green Very hot red macOS reports elevated heat"},
    };
    for (const Case& each : cases) {
        SystemSignals signals;
        signals.pressure = each.pressure;
        signals.thermal = each.thermal;
        signals.cpuLoadPercent = 12.6;
        signals.memoryTotalBytes = std::int64_t{16} << 30;
        const ReadingsLook look = readingsLook(signals);
        EXPECT_EQ(QStringList({look.pressure, look.pressureTone, look.thermal, look.thermalTone,
                               look.thermalCaption})
                      .join(u' '),
                  each.words);
        EXPECT_EQ(look.cpuLoad, "13%");
        EXPECT_EQ(look.memoryInstalled, "16 GB installed");
    }
    EXPECT_EQ(readingsLook(std::nullopt).pressure, "—");
}

TEST(MoreCauses, countInEnglish) {
    EXPECT_EQ(moreCausesLabel(0), "");
    EXPECT_EQ(moreCausesLabel(1), "And 1 more cause");
    EXPECT_EQ(moreCausesLabel(4), "And 4 more causes");
}

TEST(ProcessItem, offersQuittingOnlyWhereItIsAllowedAndFits) {
    struct Case {
        bool quittable;
        std::vector<FixID> fixes;
        std::optional<std::string> note;
        const char* fix;
        const char* shownNote;
    };
    const Case cases[] = {
        {true, {FixID::explain, FixID::quitApp}, "Idles later", "Quit Safari", ""},
        {false, {FixID::quitApp}, "Idles later", "", "Idles later"},
        {false, {FixID::quitApp}, {}, "", ""},
        {true, {FixID::explain}, "Idles later", "", "Idles later"},
        {true, {}, {}, "", ""},
    };
    for (const Case& each : cases) {
        ProcessGroup group;
        group.displayName = "Safari";
        group.members.resize(1);
        group.quittable = each.quittable;
        Explanation explanation;
        explanation.fixes = each.fixes;
        explanation.idleNote = each.note;
        const ProcessItem item = processItem(group, &explanation);
        EXPECT_EQ(item.fix.title, each.fix);
        EXPECT_EQ(item.note, each.shownNote);
    }
}

TEST(ProcessItem, tellsWhatItIsInFigures) {
    ProcessGroup group;
    group.id = "/Applications/Safari.app";
    group.appPath = group.id;
    group.displayName = "Safari";
    group.members.resize(1);
    group.cpuPercent = 140.25;
    group.memoryBytes = 3 << 20;
    group.quittable = true;
    Explanation explanation;
    explanation.summary = "A web browser.";
    explanation.symbol = "globe";
    explanation.verdict = Verdict::safe;
    ProcessItem item = processItem(group, &explanation);
    EXPECT_EQ(item.subtitle, "A web browser.");
    EXPECT_EQ(item.cpu, "140.2%");
    EXPECT_EQ(item.memory, "3 MB");
    EXPECT_EQ(item.verdict, "safe");
    EXPECT_EQ(item.symbol, "globe");
    EXPECT_EQ(item.appPath, "/Applications/Safari.app");

    group.members.resize(4);
    EXPECT_EQ(processItem(group, &explanation).subtitle, "A web browser. · 3 helpers");

    item = processItem(group, nullptr);
    EXPECT_EQ(item.subtitle, " · 3 helpers");
    EXPECT_EQ(item.symbol, "gearshape");
    EXPECT_EQ(item.verdict, "");
    EXPECT_EQ(item.fix, FixLook{});
}

} // namespace
} // namespace pacelet
