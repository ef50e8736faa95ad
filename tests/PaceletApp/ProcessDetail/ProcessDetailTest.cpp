#include "tests/PaceletApp/Support/ApplicationRig.h"

#include "PaceletApp/Websites.h"
#include "tests/PaceletApp/Support/Table.h"

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
                IsSupersetOf({"Google Chrome is a web browser. This part draws its windows and "
                              "steers its helpers.",
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
                              "Add these folders under Spotlight Privacy so macOS stops indexing "
                              "them.",
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

TEST_F(ProcessDetailTest, findsNoFoldersWhereThereAreNone) {
    launch("quiet");
    open();
    pass(9);
    explain("mds");
    EXPECT_TRUE(comesUp("No big build or virtual machine folders found."));
}

TEST_F(ProcessDetailTest, tellsWhatTheWindowServerDraws) {
    const Table<const char*, const char*, const char*, const char*> cases = {
        {"window-server", "Displays: 2 (2 scaled)", "9 windows", ""},
        {"chrome-tabs", "Displays: 1", "9 windows", "Review tabs"},
        {"stuck-app", "Displays: 1", "2 windows", "Quit Logic Pro"},
    };
    for (const auto& [scenario, displays, windows, fix] : cases) {
        launch(scenario);
        open();
        pass(9);
        explain("WindowServer");
        EXPECT_TRUE(comesUp("Windows open right now")) << scenario;
        const std::vector<std::string> texts = probe->texts();
        EXPECT_THAT(texts, IsSupersetOf({displays, windows}));
        EXPECT_EQ(std::ranges::count(texts, "Displays settings"), 1);
        // The fix of the busiest application stands before those of every Mac.
        const auto transparency = std::ranges::find(texts, "Reduce transparency");
        ASSERT_NE(transparency, texts.end());
        EXPECT_THAT(*std::prev(transparency), ::testing::HasSubstr(fix)) << scenario;
        probe.reset();
        session.reset();
    }
}

} // namespace
} // namespace pacelet::testing
