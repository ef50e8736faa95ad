#include "PaceletApp/AppPreferences/AppPreferences.h"
#include "PaceletApp/AppUpdater/AppUpdater.h"
#include "PaceletApp/Router/Commands.h"
#include "tests/PaceletApp/FixActions/FixRig.h"
#include "tests/PaceletApp/Support/FakeUpdater.h"

namespace pacelet::testing {
namespace {

TEST(Screens, StandInTheOrderOfTheirShortcuts) {
    const struct {
        Screen screen;
        std::string_view name;
        std::string_view title;
        std::string_view symbol;
    } rows[] = {
        {Screen::overview, "overview", "Overview", "square.grid.2x2"},
        {Screen::processes, "processes", "Processes", "waveform.path.ecg"},
        {Screen::backgroundItems, "backgroundItems", "Background Items", "square.stack.3d.up"},
        {Screen::internet, "internet", "Internet", "wifi"},
        {Screen::usage, "usage", "Usage", "chart.xyaxis.line"},
    };
    int index = 0;
    for (const auto& row : rows) {
        const ScreenRow& screen = screens.at(static_cast<std::size_t>(index));
        EXPECT_EQ(screen.value, row.screen);
        EXPECT_EQ(static_cast<int>(row.screen), index++);
        EXPECT_EQ(position(row.screen), index);
        EXPECT_EQ(screen.title, row.title);
        EXPECT_EQ(screen.symbol, row.symbol);
        EXPECT_EQ(rawValue(row.screen), row.name);
        EXPECT_EQ(screenFromRawValue(row.name), row.screen);
    }
    EXPECT_EQ(screens.size(), static_cast<std::size_t>(index));
    EXPECT_EQ(screenFromRawValue("Overview"), std::nullopt);
}

TEST(Commands, StandInTheOrderOfTheMenu) {
    using Action = Command::Action;
    const Screen none = Screen::overview;
    std::vector<Command> expected{
        {Action::checkNow, none, "Check now", "Ctrl+R"},
        {Action::find, none, "Find", "Ctrl+F"},
        {Action::showScreen, Screen::overview, "Overview", "Ctrl+1", true},
        {Action::showScreen, Screen::processes, "Processes", "Ctrl+2"},
        {Action::showScreen, Screen::backgroundItems, "Background Items", "Ctrl+3"},
        {Action::showScreen, Screen::internet, "Internet", "Ctrl+4"},
        {Action::showScreen, Screen::usage, "Usage", "Ctrl+5"},
        {Action::settings, none, "Settings…", "Ctrl+,", true},
        {Action::checkForUpdates, none, "Check for Updates…", ""},
        {Action::closeWindow, none, "Close window", "Ctrl+W", true},
        {Action::quit, none, "Quit Pacelet", "Ctrl+Q"}};
    EXPECT_EQ(commands(true), expected);
    expected.erase(expected.begin() + 8);
    EXPECT_EQ(commands(false), expected);
}

TEST(Router, FindsFromEveryScreen) {
    Router router;
    EXPECT_EQ(router.screen(), Screen::overview);
    EXPECT_FALSE(router.expandedID() || router.browser());
    EXPECT_EQ(router.focusSearch(), 0);
    SignalCount moves{router, &Router::screenChanged};
    // Whoever is told to focus the search finds the process list on screen.
    QObject::connect(&router, &Router::focusSearchChanged,
                     [&] { EXPECT_EQ(router.screen(), Screen::processes); });
    for (const ScreenRow& row : screens) {
        router.setScreen(row.value);
        moves.take();
        const std::int64_t before = router.focusSearch();
        router.find();
        EXPECT_EQ(router.screen(), Screen::processes);
        EXPECT_EQ(router.focusSearch(), before + 1);
        EXPECT_EQ(moves.take(), row.value == Screen::processes ? 0 : 1);
    }
}

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
    EXPECT_FALSE(router.expandedID() || router.browser());
}

TEST(AppPreferences, StartFromTheirDefaultsAndKeepWhatIsSet) {
    Simulated::SimulatedMac mac{smallMac()};
    const auto expect = [&](bool onboarded, bool showMenuBar) {
        const AppPreferences preferences{mac.preferences};
        EXPECT_EQ(preferences.onboarded(), onboarded);
        EXPECT_EQ(preferences.showMenuBar(), showMenuBar);
    };
    expect(false, true);
    mac.preferences.setData("onboarded", "true");
    mac.preferences.setData("showMenuBar", "false");
    expect(false, true); // of another type
    mac.preferences.setBoolean("onboarded", true);
    mac.preferences.setBoolean("showMenuBar", false);
    expect(true, false);

    AppPreferences preferences{mac.preferences};
    SignalCount onboarded{preferences, &AppPreferences::onboardedChanged};
    SignalCount showMenuBar{preferences, &AppPreferences::showMenuBarChanged};
    for (int round = 0; round < 2; ++round) {
        preferences.setOnboarded(false);
        EXPECT_EQ(onboarded.take(), round == 0 ? 1 : 0);
        preferences.setShowMenuBar(true);
        EXPECT_EQ(showMenuBar.take(), round == 0 ? 1 : 0);
    }
    expect(false, true);
}

TEST(AppUpdater, StartsOnceWithTheWindowIfItIsConfigured) {
    const struct {
        UpdateSettings settings;
        bool hasController;
        bool configured;
    } rows[] = {
        {{"key", "app.pacelet.Pacelet"}, true, true},   {{"key", ""}, true, false},
        {{"", "app.pacelet.Pacelet"}, true, false},     {{}, true, false},
        {{"key", "app.pacelet.Pacelet"}, false, false},
    };
    for (const auto& row : rows) {
        UpdaterRecord record;
        AppUpdater updater{row.settings,
                           row.hasController ? std::make_unique<FakeUpdater>(record) : nullptr};
        EXPECT_EQ(updater.isConfigured(), row.configured);
        EXPECT_EQ(record.starts, 0);
        updater.windowAppeared();
        updater.windowAppeared();
        updater.checkForUpdates();
        updater.setAutomaticallyChecksForUpdates(true);
        EXPECT_EQ(updater.automaticallyChecksForUpdates(), row.configured);
        EXPECT_EQ(record.automatic, row.configured);
        EXPECT_EQ(record.starts, row.configured ? 1 : 0);
        EXPECT_EQ(record.checks, row.configured ? 1 : 0);
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

} // namespace
} // namespace pacelet::testing
