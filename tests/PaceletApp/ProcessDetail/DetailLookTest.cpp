#include "PaceletApp/ProcessDetail/DetailLook.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

ProcessGroup groupOf(std::vector<ProcessUsage> members, bool quittable = false) {
    ProcessGroup group;
    group.id = "pid:" + std::to_string(members.front().pid);
    group.displayName = members.front().name;
    group.members = std::move(members);
    group.quittable = quittable;
    return group;
}

ProcessUsage usage(std::int32_t pid, std::string name, double cpu = 0, std::int64_t memory = 0) {
    ProcessUsage made;
    made.pid = pid;
    made.name = std::move(name);
    made.cpuPercent = cpu;
    made.memoryBytes = memory;
    return made;
}

TEST(ShownFixes, leaveOutWhatMakesNoSenseHere) {
    struct Case {
        bool quittable;
        std::optional<double> busyFor;
        const char* shown;
    };
    const Case cases[] = {
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
    for (const Case& each : cases) {
        std::optional<TimePoint> since;
        if (each.busyFor) {
            since = now - Seconds{*each.busyFor};
        }
        std::string shown;
        for (const FixID fix :
             shownFixes(explanation, groupOf({usage(1, "mds")}, each.quittable), since, now)) {
            shown += std::string{rawValue(fix)} + " ";
        }
        EXPECT_EQ(shown, each.shown) << each.busyFor.value_or(0);
    }
    EXPECT_TRUE(shownFixes({}, groupOf({usage(1, "mds")}), now, now).empty());
}

TEST(BusiestParts, areTheFirstFiveByCPU) {
    ProcessGroup group = groupOf({usage(1, "main", 3, 1 << 20)});
    EXPECT_EQ(partsLabel(group), "");
    EXPECT_TRUE(busiestParts(group).empty());
    for (std::int32_t pid = 2; pid <= 7; ++pid) {
        group.members.push_back(
            usage(pid, "helper", pid == 7 ? 0.4 : 12.5, std::int64_t{pid} << 30));
    }
    EXPECT_EQ(partsLabel(group), "Busiest parts (7 processes)");
    const std::vector<FigureRow> rows = busiestParts(group);
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(rows.front(), (FigureRow{"2", "helper", "13%", "2 GB"}));
    EXPECT_EQ(rows[3].id + rows[4].id, "56") << "equal ones as they came";
    group.members.resize(2);
    EXPECT_EQ(partsLabel(group), "Busiest parts (2 processes)");
    EXPECT_EQ(busiestParts(group).back(), (FigureRow{"1", "main", "3%", "1 MB"}));
}

TEST(Family, followsTheExactNameOfTheMainProcess) {
    EXPECT_EQ(familyOf(groupOf({usage(1, "mdworker_shared")})), Family::spotlight);
    EXPECT_EQ(familyOf(groupOf({usage(1, "WindowServer")})), Family::windowServer);
    EXPECT_EQ(familyOf(groupOf({usage(1, "windowserver")})), Family::other);
    EXPECT_EQ(familyOf(groupOf({usage(1, "mdsx"), usage(2, "x", 50), usage(3, "mds", 90)})),
              Family::spotlight);
}

TEST(WindowServerHelp, wordsAndGroupFollowTheCensus) {
    EXPECT_EQ(displaysText({0, 0}), "Displays: 0");
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

    std::vector<ProcessGroup> groups{groupOf({usage(10, "Ant")}),
                                     groupOf({usage(20, "Zed"), usage(30, "Zed Helper")}, true)};
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
