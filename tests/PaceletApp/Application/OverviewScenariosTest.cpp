#include "tests/PaceletApp/Support/ApplicationRig.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace pacelet::testing {
namespace {

using ::testing::ElementsAre;

/// What the user of a simulated Mac reads of the answer, from the headline to the last button.
struct Answer {
    std::string scenario;
    std::vector<std::string> words;
    double hours = 0; ///< behind a closed window, until the machine has come to its point
};

constexpr double hoursUntilStuck = 3.1;

const std::vector<std::string> smooth{"Your Mac is running smoothly.",
                                      "Nothing is slowing your Mac down right now."};

const Answer answers[] = {
    {"quiet", smooth},
    {"offline", smooth},
    {"slow-line", smooth},
    {"fresh-install", smooth},
    {"spotlight-after-update",
     {"Spotlight is doing a lot of work.",
      "mds_stores is using 256% CPU while it updates the search index. That's normal after an "
      "update or a large file change.",
      "Spotlight settings", "Settles on its own"}},
    {"spotlight-stuck",
     {"Spotlight is doing a lot of work.",
      "Spotlight has been busy for over 3 hours, which usually means it's stuck. Rebuilding the "
      "index often fixes it.",
      "Rebuild Spotlight index", "Settles on its own"},
     hoursUntilStuck},
    {"chrome-tabs",
     {"Google Chrome and 150 helpers are using 78% CPU and 11.54 GB.",
      "Each tab and extension runs as its own helper. Closing tabs you don't need frees memory.",
      "Review tabs"}},
    {"virtual-machine",
     {"A virtual machine is using 620% CPU.",
      "It's run by Docker. Quitting Docker frees all of it.", "Quit Docker"}},
    {"out-of-memory",
     {"Your Mac is running low on memory.", "Affinity Photo 2 is using 3.53 GB.",
      "Quit Affinity Photo 2"}},
    {"hot",
     {"Your Mac is hot and slowing itself down to cool off.",
      "kernel_task holds back other work to cool your Mac. Quit heavy apps and give it some air.",
      "Leave it", "And 1 more cause", "Final Cut Pro is using 165% CPU.", "Quit Final Cut Pro"}},
    {"window-server",
     {"WindowServer is busy drawing your screen.",
      "Many windows, external displays or transparency effects keep it busy.",
      "Explain this process"}},
    {"full-disk",
     {"Your disk is almost full.", "Only 7.3 GB free. macOS slows down when space runs low.",
      "Free up space"}},
    {"low-power",
     {"Low Power Mode is on, so your Mac runs slower to save energy.",
      "Turn it off in Battery settings when you need full speed.", "Battery settings"}},
    {"stuck-app",
     {"Logic Pro is using 101% CPU.", "Logic Pro and MainStage make and perform music.",
      "Quit Logic Pro"}},
    {"intel-history",
     {"Your Mac is running low on memory.", "Slack is using 928.3 MB.", "Quit Slack",
      "And 1 more cause", "Your Mac hasn't restarted in 17 days.", "Restart…"}},
};

class OverviewScenarios : public ApplicationRig {
protected:
    void look(const std::string& scenario, double hours = 0) {
        launch(scenario);
        pass(hours * 3600);
        open();
        pass(60);
    }

    /// The texts between the screen's heading and the tiles.
    std::vector<std::string> answer() {
        const auto texts = probe->texts();
        const auto begin = std::find(texts.begin(), texts.end(), "Pause");
        const auto end = std::find(begin, texts.end(), "CPU load");
        return begin == end ? texts : std::vector<std::string>{begin + 1, end};
    }

    Simulated::Records records() { return mac().machine.lock()->records; }
};

TEST_F(OverviewScenarios, EveryMachineGetsItsAnswer) {
    for (const Answer& expected : answers) {
        SCOPED_TRACE(expected.scenario);
        look(expected.scenario, expected.hours);
        EXPECT_EQ(answer(), expected.words);
    }
}

TEST_F(OverviewScenarios, AFixThatOpensSomethingOpensItAtOnce) {
    const struct {
        std::string scenario;
        QString button;
        std::string page;
    } cases[] = {
        {"spotlight-after-update", "Spotlight settings",
         "x-apple.systempreferences:com.apple.Spotlight-Settings.extension"},
        {"low-power", "Battery settings",
         "x-apple.systempreferences:com.apple.Battery-Settings.extension"},
    };
    for (const auto& each : cases) {
        look(each.scenario);
        probe->clickText(each.button);
        EXPECT_THAT(records().openedURLs, ElementsAre(each.page));
        EXPECT_FALSE(app().actions().confirmation());
    }
    look("full-disk");
    probe->clickText("Free up space");
    EXPECT_EQ(records().openedURLs.size() + records().openedApplications.size(), 1U);
}

TEST_F(OverviewScenarios, AFixThatShowsMoreLeadsThere) {
    look("window-server");
    probe->clickText("Explain this process");
    EXPECT_EQ(app().router().screen(), Screen::processes);
    EXPECT_EQ(app().monitor().group(app().router().expandedID())->displayName, "WindowServer");
    look("chrome-tabs");
    probe->clickText("Review tabs");
    EXPECT_EQ(app().router().browser(), ChromiumBrowser::chrome);
    // The sheet has the keyboard to itself, and Escape closes it.
    probe->press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(app().router().screen(), Screen::overview);
    settle();
    probe->press(Qt::Key_Escape);
    EXPECT_EQ(app().router().browser(), std::nullopt);
}

TEST_F(OverviewScenarios, AFixThatCanLoseWorkAsksFirst) {
    look("spotlight-stuck", hoursUntilStuck);
    probe->clickText("Rebuild Spotlight index");
    EXPECT_TRUE(comesUp("Rebuild the Spotlight index?"));
    EXPECT_TRUE(comesUp("macOS will ask for your password. Search results may be incomplete for a "
                        "few hours while it rebuilds."));
    probe->press(Qt::Key_Escape);
    EXPECT_TRUE(goesAway("Rebuild the Spotlight index?"));
    EXPECT_EQ(records().indexRebuilds, 0);
    probe->clickText("Rebuild Spotlight index");
    EXPECT_TRUE(comesUp("Rebuild"));
    probe->clickText("Rebuild");
    pass(30);
    EXPECT_EQ(records().indexRebuilds, 1);

    look("intel-history");
    probe->clickText("Restart…");
    EXPECT_TRUE(comesUp("Restart your Mac?"));
    EXPECT_EQ(records().restartRequests, 0);
    probe->press(Qt::Key_Return);
    pass(2);
    EXPECT_EQ(records().restartRequests, 1);
}

TEST_F(OverviewScenarios, WhatWillNotQuitBecomesACause) {
    look("stuck-app");
    for (const char* const button : {"Quit Logic Pro", "Force Quit"}) {
        probe->clickText(QString::fromLatin1(button));
        if (comesUp("Logic Pro may ask you to save your work first.")) {
            probe->press(Qt::Key_Return);
        }
        pass(11);
    }
    EXPECT_TRUE(comesUp("Logic Pro won't quit. Restart your Mac to clear it."));
    probe->clickText("Not now");
    EXPECT_TRUE(goesAway("Not now"));
    pass(4);
    EXPECT_THAT(answer(),
                ElementsAre("Logic Pro won't quit. Restart your Mac to clear it.",
                            "Some apps can't be closed once they're stuck. A restart clears them.",
                            "Restart…", "And 1 more cause", ::testing::HasSubstr("Logic Pro is"),
                            "Quit Logic Pro"));
}

} // namespace
} // namespace pacelet::testing
