#include "PaceletApp/ProcessDetail/DetailLook.h"
#include "tests/PaceletApp/Support/ApplicationRig.h"
#include "tests/PaceletApp/Support/SampleGroup.h"
#include "tests/PaceletApp/Support/Table.h"

#include "PaceletApp/Websites.h"

#include <algorithm>
#include <string>

namespace pacelet::testing {
namespace {

class ProcessDetailTest : public ApplicationRig {
protected:
    /// Opens the panel of the group of this name.
    void explain(std::string_view name) {
        app().router().setExpandedID(groupNamed(name).id);
        open(Screen::processes);
    }
};

TEST_F(ProcessDetailTest, tellsTheStoryOfAnApplication) {
    launch("chrome-tabs");
    open();
    pass(60);
    explain("Google Chrome");
    EXPECT_THAT(probe->texts(),
                IsSupersetOf({("Google Chrome is a web browser. This part draws its windows and "
                               "steers its helpers."),
                              "Why it gets busy", "Busiest parts (151 processes)",
                              "Google Chrome Helper (GPU)", "Review tabs", "Read the full guide"}));
    probe->clickText("Read the full guide");
    EXPECT_THAT(openedURLs(), Contains(std::string{paceletWebsite} + "/process/chrome"));
    probe->clickText("Review tabs");
    EXPECT_EQ(app().router().browser(), ChromiumBrowser::chrome);
}

TEST_F(ProcessDetailTest, saysNoMoreThanIsKnown) {
    launch("quiet");
    spawn("/opt/x/unheard-of", 300);
    open();
    pass(9);
    explain("unheard-of");
    EXPECT_THAT(probe->texts(),
                AllOf(Contains("We don't have an explanation for this process yet."),
                      Not(Contains("Why it gets busy")), Not(Contains("Read the full guide")),
                      Not(Contains(StartsWith("Busiest parts")))));
    explain("mds");
    EXPECT_TRUE(comesUp("No big build or virtual machine folders found."));
}

TEST_F(ProcessDetailTest, findsWhatKeepsSpotlightBusy) {
    launch("spotlight-stuck");
    mac().fillLargeFolders();
    open();
    pass(60);
    scheduler().setBackgroundDuration(Seconds{2});
    explain("mds_stores");
    EXPECT_TRUE(probe->shows("Folders that keep Spotlight busy"));
    EXPECT_FALSE(probe->shows("No big build or virtual machine folders found."));
    EXPECT_FALSE(probe->shows("Xcode build data"));
    pass(2);
    EXPECT_THAT(probe->texts(),
                IsSupersetOf({"Xcode build data", "1.49 GB", "Docker data", "1.02 GB",
                              ("Add these folders under Spotlight Privacy so macOS stops indexing "
                               "them."),
                              "Spotlight settings"}));
    scheduler().setBackgroundDuration(Seconds{0});
    EXPECT_FALSE(probe->shows("Rebuild Spotlight index"));
    app().closeWindow();
    closes(&Application::window);
    pass(3 * 3600);
    open(Screen::processes);
    EXPECT_TRUE(probe->shows("Rebuild Spotlight index"));
    probe->clickText("Rebuild Spotlight index");
    EXPECT_TRUE(comesUp("Rebuild the Spotlight index?"));
}

TEST_F(ProcessDetailTest, tellsWhatTheWindowServerDraws) {
    launch("chrome-tabs");
    open();
    pass(9);
    explain("WindowServer");
    EXPECT_TRUE(comesUp("Windows open right now"));
    const std::vector<std::string> texts = probe->texts();
    EXPECT_THAT(texts, IsSupersetOf({"Displays: 1", "9 windows"}));
    EXPECT_EQ(std::ranges::count(texts, "Displays settings"), 1);
    // The fix of the busiest application stands before those of every Mac.
    const auto transparency = std::ranges::find(texts, "Reduce transparency");
    ASSERT_NE(transparency, texts.end());
    EXPECT_EQ(*std::prev(transparency), "Review tabs");
}

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
    EXPECT_EQ(windowsFix(groups[0], OperatingSystem::macOS), std::nullopt);
    EXPECT_EQ(windowsFix(groups[1], OperatingSystem::macOS), FixID::quitApp);
    groups[1].appPath = "/Applications/Google Chrome.app";
    EXPECT_EQ(windowsFix(groups[1], OperatingSystem::macOS), FixID::reviewTabs);
    groups[1].appPath = "/Applications/Chromium.app";
    EXPECT_EQ(windowsFix(groups[1], OperatingSystem::macOS), FixID::quitApp);
    EXPECT_EQ(windowsFix(groups[1], OperatingSystem::linuxDesktop), FixID::reviewTabs);
}

TEST(GuideAddress, standsBelowTheWebsite) {
    EXPECT_EQ(guideAddress("https://a.example", "mds"), "https://a.example/process/mds");
    EXPECT_EQ(guideAddress("https://a.example", {}), "");
}

} // namespace
} // namespace pacelet::testing
