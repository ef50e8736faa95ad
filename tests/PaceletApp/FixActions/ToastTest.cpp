#include "PaceletApp/FixActions/ToastClock.h"
#include "tests/PaceletApp/FixActions/FixRig.h"
#include "tests/PaceletApp/Support/Table.h"

namespace pacelet::testing {
namespace {

TEST(FixTexts, TellEveryOutcomeWithAndWithoutAnApplication) {
    const Table<FixOutcome, std::string, std::string> rows = {
        {FixOutcome::done(), "Done", "Done"},
        {FixOutcome::alreadyGone(), "Safari already quit", "It already quit"},
        {FixOutcome::stillRunning(), "Safari is still running", "It is still running"},
        {FixOutcome::cancelled(), "Cancelled", "Cancelled"},
        {FixOutcome::refused(), "Safari is protected, so Pacelet won't quit it.",
         "That app is protected, so Pacelet won't quit it."},
        {FixOutcome::failed("-1743"), "Couldn't finish: -1743", "Couldn't finish: -1743"},
    };
    for (const auto& [outcome, withApp, without] : rows) {
        EXPECT_EQ(FixTexts::report(outcome, "Safari"), withApp);
        EXPECT_EQ(FixTexts::report(outcome, {}), without);
    }
    EXPECT_EQ(FixTexts::stuckTitle("Safari"), "Safari won't quit. Restart your Mac to clear it.");
    EXPECT_EQ(FixTexts::stuckTitle({}), "This app won't quit. Restart your Mac to clear it.");
}

class ToastClockTest : public FixRig {
protected:
    void show(const std::string& text) {
        actions->setToast(text);
        scheduler.settle();
    }
    void expectNothingWaits() {
        EXPECT_EQ(actions->toast(), std::nullopt);
        EXPECT_EQ(scheduler.pendingSleeps(), 0U);
    }
};

TEST_F(ToastClockTest, TakesAToastAwayAfterFourSeconds) {
    actions->setToast("Before the window");
    ToastClock clock{*actions, scheduler};
    SignalCount changes{*actions, &FixActions::toastChanged};
    advance(3.99);
    EXPECT_EQ(actions->toast(), "Before the window");
    advance(0.01);
    expectNothingWaits();
    show("Done");
    advance(2);
    show("Done"); // the same text goes on
    advance(1.99);
    EXPECT_EQ(actions->toast(), "Done");
    advance(0.01);
    expectNothingWaits();
    EXPECT_EQ(changes.take(), 3);
}

TEST_F(ToastClockTest, TakesAReplacementAwayAtOnce) {
    ToastClock clock{*actions, scheduler};
    show("Done");
    advance(2);
    actions->setToast("Cancelled");
    EXPECT_EQ(actions->toast(), "Cancelled");
    scheduler.settle();
    expectNothingWaits();
    show("Notes already quit"); // it replaces nothing
    advance(3.99);
    EXPECT_EQ(actions->toast(), "Notes already quit");
    actions->setToast({});
    scheduler.settle();
    expectNothingWaits();
}

TEST_F(ToastClockTest, EndsWithItsWindowOrWithTheFixes) {
    auto clock = std::make_unique<ToastClock>(*actions, scheduler);
    show("Done");
    clock.reset();
    scheduler.settle();
    expectNothingWaits();
    show("Nobody counts");
    advance(10);
    EXPECT_EQ(actions->toast(), "Nobody counts");
    clock = std::make_unique<ToastClock>(*actions, scheduler);
    actions.reset();
    advance(10);
    EXPECT_EQ(scheduler.pendingSleeps(), 0U);
}

} // namespace
} // namespace pacelet::testing
