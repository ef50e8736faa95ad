#include "tests/PaceletApp/FixActions/FixRig.h"

namespace pacelet::testing {
namespace {

using Simulated::QuitHabit;

class QuitTest : public FixRig {
protected:
    bool isStuckFound() const {
        return std::ranges::any_of(monitor->result().findings, [](const Finding& finding) {
            return finding.kind() == FindingKind::stuckApp;
        });
    }

    const Question forceQuestion{"Notes isn't responding.",
                                 "Force quit it? Unsaved work in Notes will be lost.", "Force Quit",
                                 true};
};

TEST_F(QuitTest, SaysHowItWentAndHasTheScreensDropTheApplication) {
    const ProcessGroup group = groupOf(notes);
    ProcessGroup protectedGroup = group;
    for (ProcessUsage& member : protectedGroup.members) {
        member.uid = 0;
    }
    askToQuit(protectedGroup);
    EXPECT_EQ(actions->toast(), "Notes is protected, so Pacelet won't quit it.");
    EXPECT_NE(monitor->group(notes), nullptr);
    EXPECT_EQ(samples(), 2);

    setHabit(QuitHabit::obeys, 0.3); // it is looked after four times a second
    actions->setToast({});
    askToQuit(group);
    advance(0.49);
    EXPECT_EQ(actions->toast(), std::nullopt);
    advance(0.01);
    EXPECT_EQ(actions->toast(), "Done");
    EXPECT_EQ(monitor->group(notes), nullptr);
    EXPECT_EQ(samples(), 3);

    askToQuit(group);
    EXPECT_EQ(actions->toast(), "Notes already quit");
    EXPECT_EQ(samples(), 4);
    EXPECT_THAT(takeOutcomes(), ElementsAre("refused", "done", "alreadyGone"));
    EXPECT_EQ(question(), std::nullopt);
}

TEST_F(QuitTest, OffersForceAfterTenSecondsAndForceWorks) {
    setHabit(QuitHabit::resists);
    askToQuit(groupOf(notes));
    perform(FixID::quitApp, groupOf(notes)); // its dialog stands when the time is over
    const QUuid replaced = actions->confirmation()->id;
    advance(9.99);
    EXPECT_EQ(question()->title, "Quit Notes?");
    advance(0.01);
    EXPECT_EQ(question(), forceQuestion);
    EXPECT_NE(actions->confirmation()->id, replaced);
    actions->dismissConfirmation();
    advance(30);
    EXPECT_EQ(mac.machine.lock()->running.size(), 1U);
    EXPECT_FALSE(question() || actions->toast());
    EXPECT_EQ(samples(), 1) << "nothing has changed yet";

    askToQuit(groupOf(notes));
    advance(10);
    accept();
    EXPECT_EQ(actions->toast(), "Done");
    EXPECT_THAT(takeOutcomes(), ElementsAre("stillRunning", "stillRunning", "done"));
    EXPECT_EQ(monitor->group(notes), nullptr);
    EXPECT_FALSE(monitor->stuckApp() || actions->stuckAlert());
}

TEST_F(QuitTest, AnApplicationThatNothingEndsIsStuckUntilItIsGone) {
    SignalCount alerts{*actions, &FixActions::stuckAlertChanged};
    setHabit(QuitHabit::hangs);
    askToQuit(groupOf(notes));
    advance(10);
    accept();
    advance(9.99);
    EXPECT_EQ(actions->stuckAlert(), std::nullopt);
    EXPECT_EQ(monitor->stuckApp(), std::nullopt);
    advance(0.01);
    EXPECT_EQ(actions->stuckAlert(), "Notes");
    EXPECT_EQ(monitor->stuckApp(), "Notes");
    EXPECT_TRUE(isStuckFound());
    EXPECT_EQ(samples(), 2);
    EXPECT_EQ(question(), std::nullopt);
    EXPECT_EQ(actions->toast(), std::nullopt) << "the alert says it";
    EXPECT_THAT(takeOutcomes(), ElementsAre("stillRunning", "stillRunning"));

    actions->dismissStuckAlert();
    actions->dismissStuckAlert();
    EXPECT_EQ(actions->stuckAlert(), std::nullopt);
    EXPECT_EQ(alerts.take(), 2);
    EXPECT_EQ(monitor->stuckApp(), "Notes") << "the user has only read about it";
    quit("Notes");
    monitor->checkNow();
    scheduler.settle();
    EXPECT_FALSE(monitor->stuckApp() || isStuckFound());
}

TEST_F(QuitTest, RunsBesideAnotherQuit) {
    setHabit(QuitHabit::obeys, 5);
    launch("Slow", QuitHabit::obeys, 3);
    monitor->checkNow();
    scheduler.settle();
    askToQuit(groupOf(notes));
    advance(1);
    askToQuit(groupOf("/Applications/Slow.app"));
    askToQuit(groupOf("/Applications/Slow.app")); // its second wait ends with the first one
    advance(2.99);
    EXPECT_THAT(takeOutcomes(), IsEmpty());
    advance(0.01);
    EXPECT_THAT(takeOutcomes(), ElementsAre("done", "done"));
    EXPECT_EQ(monitor->group("/Applications/Slow.app"), nullptr);
    EXPECT_NE(monitor->group(notes), nullptr);
    advance(1);
    EXPECT_THAT(takeOutcomes(), ElementsAre("done"));
    EXPECT_EQ(monitor->group(notes), nullptr);
    EXPECT_EQ(scheduler.pendingSleeps(), 0U);
}

} // namespace
} // namespace pacelet::testing
