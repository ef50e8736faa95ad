#include "PaceletApp/ProcessDetail/DetailLook.h"
#include "tests/PaceletApp/Support/SampleGroup.h"
#include "tests/PaceletApp/Support/Table.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

TEST(ShownFixes, leaveOutWhatMakesNoSenseHere) {
    const Table<bool, std::optional<double>, const char*> cases = {
        {true, {}, "openSpotlightSettings quitApp "},
        {false, {}, "openSpotlightSettings "},
        {false, 10800.0, "openSpotlightSettings "},
        {false, 10800.5, "openSpotlightSettings rebuildSpotlightIndex "},
        {true, 90000.0, "openSpotlightSettings quitApp rebuildSpotlightIndex "},
        {false, -5.0, "openSpotlightSettings "},
    };
    Explanation explanation;
    explanation.fixes = {FixID::openSpotlightSettings, FixID::explain, FixID::quitApp,
                         FixID::rebuildSpotlightIndex};
    const TimePoint now = fromUnixTime(1'000'000);
    for (const auto& [quittable, busyFor, expected] : cases) {
        std::optional<TimePoint> since;
        if (busyFor) {
            since = now - Seconds{*busyFor};
        }
        const ProcessGroup group = sampleGroup({sampleUsage(1, "mds")}, quittable);
        std::string shown;
        for (const FixID fix : shownFixes(explanation, group, since, now)) {
            shown += std::string{rawValue(fix)} + " ";
        }
        EXPECT_EQ(shown, expected) << busyFor.value_or(0);
    }
    EXPECT_TRUE(shownFixes({}, sampleGroup({sampleUsage(1, "mds")}), now, now).empty());
}

TEST(BusiestParts, areTheFirstFiveByCPU) {
    ProcessGroup group = sampleGroup({sampleUsage(1, "main", 3, 1 << 20)});
    EXPECT_EQ(partsLabel(group), "");
    EXPECT_TRUE(busiestParts(group).empty());
    for (std::int32_t pid = 2; pid <= 7; ++pid) {
        const double cpu = pid == 7 ? 0.4 : 12.5;
        group.members.push_back(sampleUsage(pid, "helper", cpu, std::int64_t{pid} << 30));
    }
    EXPECT_EQ(partsLabel(group), "Busiest parts (7 processes)");
    const std::vector<FigureRow> rows = busiestParts(group);
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(rows.front(), (FigureRow{"2", "helper", "13%", "2 GB"}));
    EXPECT_EQ(rows[3].id + rows[4].id, "56") << "equal ones as they came";
}

TEST(Family, followsTheExactNameOfTheMainProcess) {
    const Table<const char*, Family> rows = {{"mdworker_shared", Family::spotlight},
                                             {"WindowServer", Family::windowServer},
                                             {"windowserver", Family::other}};
    for (const auto& [name, family] : rows) {
        EXPECT_EQ(familyOf(sampleGroup({sampleUsage(1, "x"), sampleUsage(3, name, 90)})), family);
    }
}

TEST(WindowServerHelp, wordsAndGroupFollowTheCensus) {
    EXPECT_EQ(displaysText({2, 0}), "Displays: 2");
    EXPECT_EQ(displaysText({3, 1}), "Displays: 3 (1 scaled)");

    std::vector<WindowCount> counts;
    for (std::int32_t pid = 1; pid <= 6; ++pid) {
        counts.push_back({"App", pid, 7 - pid});
    }
    EXPECT_EQ(windowRows(counts).size(), 5U);
    EXPECT_EQ(windowRows(counts).front().first, "6 windows");
    counts = {{"Zed", 30, 1}, {"Ant", 10, 1}};
    EXPECT_EQ(windowRows(counts).front(), (FigureRow{"30", "Zed", "1 window", ""}));

    std::vector<ProcessGroup> groups{
        sampleGroup({sampleUsage(10, "Ant")}),
        sampleGroup({sampleUsage(20, "Zed"), sampleUsage(30, "Zed Helper")}, true)};
    EXPECT_EQ(topGroup(counts, groups), &groups[1]);
    EXPECT_EQ(topGroup({}, groups), nullptr);
    counts[0].ownerPID = 99;
    EXPECT_EQ(topGroup(counts, groups), nullptr) << "the second is not asked";
    EXPECT_EQ(windowsFix(groups[0]), std::nullopt);
    EXPECT_EQ(windowsFix(groups[1]), FixID::quitApp);
    groups[1].appPath = "/Applications/Google Chrome.app";
    EXPECT_EQ(windowsFix(groups[1]), FixID::reviewTabs);
}

TEST(GuideAddress, standsBelowTheWebsite) {
    EXPECT_EQ(guideAddress("https://a.example", "mds"), "https://a.example/process/mds");
    EXPECT_EQ(guideAddress("https://a.example", {}), "");
}

} // namespace
} // namespace pacelet
