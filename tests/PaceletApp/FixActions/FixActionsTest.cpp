#include "tests/PaceletApp/FixActions/FixRig.h"
#include "tests/PaceletApp/Support/Table.h"
#include "tests/Support/FakeWorkspace.h"

#include <set>

namespace pacelet::testing {
namespace {

using FixActionsTest = FixRig;

const Question restartQuestion{"Restart your Mac?",
                               "Save your work first. macOS will ask you to confirm.", "Restart…"};
const Question rebuildQuestion{
    "Rebuild the Spotlight index?",
    "macOS will ask for your password. Search results may be incomplete for a few hours while it "
    "rebuilds.",
    "Rebuild"};

TEST_F(FixActionsTest, OpensTheSettingsAndAsksNothing) {
    const std::string prefix = "x-apple.systempreferences:com.apple.";
    const Table<FixID, std::string> rows = {
        {FixID::openSpotlightSettings, "Spotlight-Settings.extension"},
        {FixID::openLoginItemsSettings, "LoginItems-Settings.extension"},
        {FixID::openDisplaySettings, "Displays-Settings.extension"},
        {FixID::openAccessibilityDisplay, "Accessibility-Settings.extension?Display"},
        {FixID::openBatterySettings, "Battery-Settings.extension"},
        {FixID::openWiFiSettings, "wifi-settings-extension"},
    };
    for (const auto& [fix, page] : rows) {
        perform(fix);
        perform(fix, groupOf(notes));
        EXPECT_THAT(std::exchange(mac.machine.lock()->records.openedURLs, {}),
                    ElementsAre(prefix + page, prefix + page));
    }
    EXPECT_FALSE(question() || actions->toast() || actions->stuckAlert() || router.expandedID());
    EXPECT_EQ(router.screen(), Screen::overview);
}

TEST_F(FixActionsTest, OpensTheSiblingsWebsite) {
    perform(FixID::openTidyvault);
    EXPECT_THAT(mac.machine.lock()->records.openedURLs,
                ElementsAre("https://tidyvault.example/?ref=pacelet"));
}

TEST_F(FixActionsTest, ExplainsAGroupInTheProcessList) {
    actions->press(FixID::explain, notes);
    EXPECT_EQ(router.expandedID(), notes);
    EXPECT_EQ(router.screen(), Screen::processes);
    router.setScreen(Screen::usage);
    perform(FixID::explain);
    EXPECT_EQ(router.expandedID().value_or(""), "") << "no row is open";
    EXPECT_EQ(router.screen(), Screen::processes);
    EXPECT_EQ(router.focusSearch(), 0);
}

TEST_F(FixActionsTest, ReviewsTheTabsOfBrowsersAndNothingElse) {
    ProcessGroup group = groupOf(notes);
    for (const auto& path : {std::optional<std::string>{"/Applications/Safari.app"}, {}}) {
        group.appPath = path;
        router.setBrowser(ChromiumBrowser::edge);
        perform(FixID::reviewTabs, group);
        EXPECT_EQ(router.browser(), ChromiumBrowser::edge) << "an open panel stays";
    }
    perform(FixID::reviewTabs);
    EXPECT_EQ(router.browser(), ChromiumBrowser::edge);
    group.appPath = "/Users/ann/Brave Browser.app";
    perform(FixID::reviewTabs, group);
    EXPECT_EQ(router.browser(), ChromiumBrowser::brave);
    EXPECT_FALSE(question() || actions->toast());
}

TEST_F(FixActionsTest, AsksBeforeWhatCouldLoseWork) {
    SignalCount changes{*actions, &FixActions::confirmationChanged};
    const ProcessGroup group = groupOf(notes);
    const Question quitQuestion{"Quit Notes?", "Notes may ask you to save your work first.",
                                "Quit Notes"};
    const Table<FixID, const ProcessGroup*, std::optional<Question>> rows = {
        {FixID::quitApp, nullptr, std::nullopt},
        {FixID::quitApp, &group, quitQuestion},
        {FixID::rebuildSpotlightIndex, nullptr, rebuildQuestion},
        {FixID::restartMac, &group, restartQuestion},
    };
    for (const auto& [fix, given, asked] : rows) {
        actions->perform(fix, given);
        EXPECT_EQ(question(), asked);
        actions->dismissConfirmation();
        EXPECT_EQ(question(), std::nullopt);
        EXPECT_EQ(changes.take(), asked ? 2 : 0);
        accept(); // no dialog is open
    }
    EXPECT_EQ(changes.take(), 0);
    EXPECT_EQ(mac.machine.lock()->running.size(), 1U);
    EXPECT_EQ(calls("/usr/bin/osascript"), 0);
    EXPECT_EQ(actions->toast(), std::nullopt);
}

TEST_F(FixActionsTest, ANewDialogReplacesTheLastOneAndHasItsOwnIdentity) {
    std::set<QUuid> ids{QUuid{}};
    for (const FixID fix : {FixID::rebuildSpotlightIndex, FixID::rebuildSpotlightIndex,
                            FixID::quitApp, FixID::restartMac}) {
        perform(fix, groupOf(notes));
        EXPECT_TRUE(ids.insert(actions->confirmation()->id).second);
    }
    accept();
    const auto records = mac.machine.lock()->records;
    EXPECT_EQ(records.restartRequests, 1);
    EXPECT_EQ(records.indexRebuilds, 0);
    EXPECT_EQ(mac.machine.lock()->running.size(), 1U);
}

TEST_F(FixActionsTest, RebuildingReportsAndRestartingKeepsSilentUnlessItFails) {
    using namespace Simulated;
    const std::string osascript = "/usr/bin/osascript";
    using Text = std::optional<std::string>;
    const std::string byHand = "Choose Apple menu > Restart.";
    const Table<std::optional<Failure>, Text, Text> rows = {
        {std::nullopt, "Done", {}},
        {ToolFails{osascript, 1, "error: User canceled. (-128)\n"}, "Cancelled", {}},
        {ScriptFails{-1743, "Not authorized."}, "Couldn't finish: -1743", byHand},
        {ToolFails{osascript, 2, " out of order\n"}, "Couldn't finish: out of order", byHand},
        {ToolMissing{osascript}, "Couldn't finish: osascript", byHand},
    };
    for (const auto& [failure, rebuilt, restarted] : rows) {
        if (failure) {
            mac.machine.inject(*failure);
        }
        for (const auto& [fix, toast] : {std::pair{FixID::rebuildSpotlightIndex, rebuilt},
                                         std::pair{FixID::restartMac, restarted}}) {
            actions->setToast({});
            perform(fix);
            accept();
            EXPECT_EQ(actions->toast(), toast);
            EXPECT_EQ(question(), std::nullopt);
        }
        mac.machine.clearFailures();
    }
    mac.machine.inject(PromptCancelled{});
    perform(FixID::rebuildSpotlightIndex);
    accept();
    EXPECT_EQ(actions->toast(), "Cancelled");
    const auto records = mac.machine.lock()->records;
    EXPECT_EQ(records.indexRebuilds, 1);
    EXPECT_EQ(records.restartRequests, 1);
    EXPECT_THAT(takeOutcomes(), IsEmpty()) << "only quits are logged";
    EXPECT_EQ(samples(), 1) << "only a quit looks again";
}

TEST_F(FixActionsTest, PromisesNoQuestionThatNobodyAsks) {
    FakeWorkspace desktop;
    FakeApplication& app = desktop.launch(notes, "Notes");
    desktop.launch(notes, "Notes"); // a copy that can always be asked
    const Platform mine = mac.platform();
    Platform here{mine.clock,       mine.tools,        mine.kernel,     desktop,
                  mine.networkLink, mine.windowServer, mine.loginItems, mine.preferences,
                  mine.log,         mine.home,         mine.root,       mine.applicationSupport};
    here.abilities.alwaysAsks = false;
    actions = std::make_unique<FixActions>(here, scheduler, *monitor, router, "");
    for (const bool asks : {true, false}) {
        desktop.restartAsks = app.canAnswer = asks;
        perform(FixID::restartMac);
        scheduler.settle();
        EXPECT_EQ(question() == restartQuestion, asks);
        EXPECT_EQ(question()->destructive, !asks);
        perform(FixID::quitApp, groupOf(notes));
        scheduler.settle();
        EXPECT_EQ(question()->message,
                  asks ? "Notes may ask you to save your work first."
                       : "Notes can't be asked to save first. Unsaved work in it may be lost.");
        EXPECT_EQ(question()->destructive, !asks);
        EXPECT_EQ(app.terminateCalls, 0);
    }
    mac.machine.inject(Simulated::ScriptFails{-1743, "Not authorized."});
    perform(FixID::restartMac);
    scheduler.settle();
    accept();
    EXPECT_EQ(actions->toast(), "You may not restart this computer. Ask whoever looks after it.");
    here.abilities.restarts = false;
    actions = std::make_unique<FixActions>(here, scheduler, *monitor, router, "");
    perform(FixID::restartMac);
    EXPECT_EQ(actions->toast(), "Choose Apple menu > Restart.");
    EXPECT_EQ(question(), std::nullopt);
}

TEST_F(FixActionsTest, APromptLeavesTheUserFree) {
    scheduler.setBackgroundDuration(Seconds{60});
    perform(FixID::rebuildSpotlightIndex);
    accept();
    advance(59);
    EXPECT_EQ(actions->toast(), std::nullopt);
    perform(FixID::restartMac);
    EXPECT_EQ(question(), restartQuestion);
    actions->dismissConfirmation();
    advance(1);
    EXPECT_EQ(actions->toast(), "Done");
    EXPECT_EQ(question(), std::nullopt);
}

TEST_F(FixActionsTest, WhatIsUnderWayOutlivesIt) {
    setHabit(Simulated::QuitHabit::hangs);
    scheduler.setBackgroundDuration(Seconds{1});
    for (const FixID fix : {FixID::quitApp, FixID::rebuildSpotlightIndex, FixID::restartMac}) {
        perform(fix, groupOf(notes));
        accept();
    }
    actions.reset();
    advance(20);
    EXPECT_THAT(takeOutcomes(), IsEmpty());
    EXPECT_EQ(scheduler.pendingSleeps(), 0U);
}

} // namespace
} // namespace pacelet::testing
