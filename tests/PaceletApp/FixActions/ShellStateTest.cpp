#include "PaceletApp/AppPreferences/AppPreferences.h"
#include "PaceletApp/AppUpdater/AppUpdater.h"
#include "PaceletApp/FixActions/ToastClock.h"
#include "tests/PaceletApp/FixActions/FixRig.h"
#include "tests/PaceletApp/Support/FakeUpdater.h"
#include "tests/PaceletApp/Support/Table.h"

namespace pacelet::testing {
namespace {

TEST(Router, TellsAChangeOnceAndOnlyAChange) {
    Router router;
    SignalCount screen{router, &Router::screenChanged};
    SignalCount expanded{router, &Router::expandedIDChanged};
    SignalCount browser{router, &Router::browserChanged};
    for (int round = 0; round < 2; ++round) {
        router.setScreen(Screen::backgroundItems);
        router.setExpandedID("pid:7");
        router.setBrowser(ChromiumBrowser::brave);
        EXPECT_EQ(screen.take() + expanded.take() + browser.take(), round == 0 ? 3 : 0);
    }
    router.setExpandedID({});
    router.setBrowser({});
    EXPECT_EQ(expanded.take() + browser.take(), 2);
    // Whoever is told to focus the search finds the process list on screen.
    QObject::connect(&router, &Router::focusSearchChanged,
                     [&] { EXPECT_EQ(router.screen(), Screen::processes); });
    for (int round = 0; round < 2; ++round) {
        router.find();
        EXPECT_EQ(router.focusSearch(), round + 1);
        EXPECT_EQ(screen.take(), round == 0 ? 1 : 0);
    }
}

TEST(AppPreferences, StartFromTheirDefaultsAndTellChangesOnce) {
    Simulated::SimulatedMac mac{smallMac()};
    mac.preferences.setData("onboarded", "true"); // of another type
    mac.preferences.setData("showMenuBar", "false");
    AppPreferences preferences{mac.preferences};
    EXPECT_TRUE(!preferences.onboarded() && preferences.showMenuBar());
    SignalCount onboarded{preferences, &AppPreferences::onboardedChanged};
    SignalCount showMenuBar{preferences, &AppPreferences::showMenuBarChanged};
    for (int round = 0; round < 2; ++round) {
        preferences.setOnboarded(true);
        EXPECT_EQ(onboarded.take(), round == 0 ? 1 : 0);
        preferences.setShowMenuBar(false);
        EXPECT_EQ(showMenuBar.take(), round == 0 ? 1 : 0);
    }
    const AppPreferences next{mac.preferences};
    EXPECT_TRUE(next.onboarded() && !next.showMenuBar());
}

TEST(AppUpdater, StartsOnceWithTheWindowIfItIsConfigured) {
    const Table<const char*, UpdateSettings, bool, bool> rows = {
        {"all there", {"key", "app.pacelet.Pacelet"}, true, true},
        {"no bundle", {"key", ""}, true, false},
        {"no key", {"", "app.pacelet.Pacelet"}, true, false},
        {"no settings", {}, true, false},
        {"no controller", {"key", "app.pacelet.Pacelet"}, false, false},
    };
    for (const auto& [name, settings, hasController, configured] : rows) {
        SCOPED_TRACE(name);
        UpdaterRecord record;
        AppUpdater updater{settings,
                           hasController ? std::make_unique<FakeUpdater>(record) : nullptr};
        EXPECT_EQ(updater.isConfigured(), configured);
        EXPECT_EQ(record.starts, 0);
        updater.windowAppeared();
        updater.windowAppeared();
        updater.checkForUpdates();
        updater.setAutomaticallyChecksForUpdates(true);
        EXPECT_EQ(updater.automaticallyChecksForUpdates(), configured);
        EXPECT_EQ(record.automatic, configured);
        EXPECT_EQ(record.starts, configured ? 1 : 0);
        EXPECT_EQ(record.checks, configured ? 1 : 0);
    }
}

TEST(AppUpdater, FollowsWhetherItCanCheck) {
    UpdaterRecord record{.can = true};
    AppUpdater updater{{"key", "app.pacelet.Pacelet"}, std::make_unique<FakeUpdater>(record)};
    EXPECT_TRUE(updater.canCheckForUpdates());
    SignalCount changes{updater, &AppUpdater::canCheckForUpdatesChanged};
    record.can = false;
    record.changed();
    record.changed();
    EXPECT_FALSE(updater.canCheckForUpdates());
    EXPECT_EQ(changes.take(), 1);
    EXPECT_FALSE((AppUpdater{{}, nullptr}.canCheckForUpdates()));
}

TEST(FixTexts, TellEveryOutcomeWithAndWithoutAnApplication) {
    const Table<FixOutcome, std::string, std::string> rows = {
        {FixOutcome::alreadyGone(), "Safari already quit", "It already quit"},
        {FixOutcome::stillRunning(), "Safari is still running", "It is still running"},
        {FixOutcome::refused(), "Safari is protected, so Pacelet won't quit it.",
         "That app is protected, so Pacelet won't quit it."},
    };
    for (const auto& [outcome, withApp, without] : rows) {
        EXPECT_EQ(FixTexts::report(outcome, "Safari"), withApp);
        EXPECT_EQ(FixTexts::report(outcome, {}), without);
    }
    EXPECT_EQ(FixTexts::stuck({}).title, "This app won't quit. Restart your Mac to clear it.");
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
