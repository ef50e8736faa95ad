#include "PaceletApp/InternetView/SpeedTester.h"
#include "PaceletApp/SettingsView/SettingsModel.h"
#include "tests/PaceletApp/Support/ApplicationRig.h"
#include "tests/PaceletApp/Support/FakeUpdater.h"
#include "tests/PaceletApp/Support/Stage.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QSignalSpy>

namespace pacelet::testing {
namespace {

constexpr const char* question = "Clear usage history?";

/// The settings in a window of their own.
class SettingsTest : public ApplicationRig {
protected:
    void SetUp() override { launch("quiet"); }

    void openSettings() {
        app().showSettings();
        ASSERT_TRUE(QTest::qWaitForWindowActive(app().settings()));
        probe.emplace(*app().settings());
        settle();
    }

    void close() {
        probe->press(Qt::Key_Escape);
        closes(&Application::settings);
    }

    bool isOn(const char* name) { return probe->property(name, "checked").toBool(); }

    const UsageStore& store() { return app().monitor().usageStore(); }

    void keepRecords() {
        const auto minute = static_cast<std::int64_t>(unixTime(mac().machine.now()) / 60);
        store().append({.t = minute - 1500, .cpu = 7, .n = 1});
        store().append({.t = minute, .cpu = 9, .n = 1});
        ASSERT_EQ(store().load(distantPast).size(), 2U);
    }
};

TEST_F(SettingsTest, ShowsAndChangesWhatIsStored) {
    openSettings();
    EXPECT_EQ(app().settings()->width(), 460);
    EXPECT_THAT(probe->texts(),
                IsSupersetOf({"General", "Start at login", "Show status in the menu bar",
                              "Usage history", "Keep usage history", "Clear usage history…"}));
    EXPECT_FALSE(probe->shows("Check for updates automatically"));
    const Table<const char*, bool, std::function<bool()>> rows = {
        {"startAtLogin", false,
         [this] { return mac().loginItems.status() == LoginItemStatus::enabled; }},
        {"showMenuBar", true, [this] { return *mac().preferences.boolean("showMenuBar"); }},
        {"keepHistory", true, [this] { return *mac().preferences.boolean("keepUsageHistory"); }},
    };
    for (const auto& [name, start, stored] : rows) {
        EXPECT_EQ(isOn(name), start) << name;
        probe->click(name);
        EXPECT_EQ(isOn(name), !start) << name;
        EXPECT_EQ(stored(), !start) << name;
    }
    EXPECT_FALSE(app().monitor().keepHistory());
    app().monitor().setKeepHistory(true); // it follows what is changed elsewhere
    app().preferences().setShowMenuBar(true);
    EXPECT_TRUE(isOn("showMenuBar") && isOn("keepHistory"));
    app().monitor().setKeepHistory(false);
    app().preferences().setShowMenuBar(false);
    close();
    openSettings();
    for (const auto& [name, start, stored] : rows) {
        EXPECT_EQ(isOn(name), !start) << name;
        probe->click(name);
        EXPECT_EQ(stored(), start) << name;
    }
}

TEST_F(SettingsTest, ARefusedSwitchGoesBackWithoutAWord) {
    for (const LoginItemStatus status :
         {LoginItemStatus::requiresApproval, LoginItemStatus::notFound, LoginItemStatus::enabled}) {
        mac().machine.lock()->loginItem = status;
        mac().machine.inject(Simulated::LoginItemsRefuse{});
        openSettings();
        const bool enabled = status == LoginItemStatus::enabled;
        const auto texts = probe->texts();
        probe->click("startAtLogin");
        EXPECT_EQ(isOn("startAtLogin"), enabled);
        EXPECT_EQ(probe->texts(), texts);
        // Once it agrees, the same switch works.
        mac().machine.clearFailures();
        probe->click("startAtLogin");
        EXPECT_EQ(isOn("startAtLogin"), !enabled);
        EXPECT_EQ(mac().loginItems.status() == LoginItemStatus::enabled, !enabled);
        close();
    }
    EXPECT_EQ(app().actions().toast(), std::nullopt);
}

TEST_F(SettingsTest, ClearsTheHistoryWhenToldTwice) {
    keepRecords();
    openSettings();
    probe->click("keepHistory"); // what was recorded stays, and can still be cleared
    for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
        probe->clickText("Clear usage history…");
        ASSERT_TRUE(comesUp(question));
        // Where something could be lost, the key that agrees by habit does no harm.
        probe->press(key);
        ASSERT_TRUE(goesAway(question));
        EXPECT_TRUE(probe->item("clear")->isEnabled());
        EXPECT_EQ(store().load(distantPast).size(), 2U);
    }
    probe->clickText("Clear usage history…");
    ASSERT_TRUE(comesUp(question));
    probe->clickText("Clear History");
    EXPECT_TRUE(comesUp("History cleared"));
    EXPECT_FALSE(probe->item("clear")->isEnabled());
    EXPECT_TRUE(store().load(distantPast).empty());
    close();
    openSettings();
    EXPECT_TRUE(probe->item("clear")->isEnabled());
    EXPECT_TRUE(probe->shows("Clear usage history…"));
}

TEST_F(SettingsTest, ClearsBehindAClosedWindowAndIgnoresWhatFails) {
    keepRecords();
    openSettings();
    probe->click("clear");
    ASSERT_TRUE(comesUp(question));
    scheduler().setBackgroundDuration(Seconds{1});
    probe->clickText("Clear History");
    ASSERT_TRUE(goesAway(question));
    close();
    pass(2);
    scheduler().setBackgroundDuration(Seconds{0});
    EXPECT_TRUE(store().load(distantPast).empty());

    mac().machine.inject(Simulated::FolderUnwritable{store().directory.string()});
    openSettings();
    probe->click("clear");
    ASSERT_TRUE(comesUp(question));
    probe->clickText("Clear History");
    EXPECT_TRUE(comesUp("History cleared"));
}

TEST_F(SettingsTest, IsOneWindowThatKeysOpenAndClose) {
    open();
    for (const int key : {Qt::Key_Escape, Qt::Key_W}) {
        probe->press(Qt::Key_Comma, Qt::ControlModifier);
        ASSERT_NE(app().settings(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(app().settings()));
        const QQuickWindow* const first = app().settings();
        app().settings()->showMinimized();
        app().showSettings();
        EXPECT_EQ(app().settings(), first);
        EXPECT_EQ(first->visibility(), QWindow::Windowed);
        ASSERT_TRUE(QTest::qWaitForWindowActive(app().settings()));
        WindowProbe settings{*app().settings()};
        // All that is not about this one window reaches the program.
        settings.press(Qt::Key_3, Qt::ControlModifier);
        EXPECT_EQ(app().router().screen(), Screen::backgroundItems);
        app().router().setScreen(Screen::overview);
        settings.press(key, key == Qt::Key_W ? Qt::ControlModifier : Qt::NoModifier);
        closes(&Application::settings);
        ASSERT_NE(app().window(), nullptr);
        app().showWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(app().window()));
    }
    // Either window lives without the other.
    app().showSettings();
    app().closeWindow();
    closes(&Application::window);
    pass(5);
    EXPECT_FALSE(app().monitor().windowVisible());
    openSettings();
    EXPECT_TRUE(probe->shows("General"));
    close();
}

/// Preferences that are not what the user has chosen.
class TroubledPreferences final : public Simulated::MacPreferences {
public:
    using MacPreferences::MacPreferences;

    PreferencesTrouble trouble() override { return now; }
    ObserverHandle observeTrouble(std::function<void()> changed) override {
        tell = std::move(changed);
        return nullptr;
    }

    PreferencesTrouble now = PreferencesTrouble::flawed;
    std::function<void()> tell;
};

TEST_F(SettingsTest, SaysWhenSettingsAreNotWhatWasChosen) {
    TroubledPreferences stored{mac().machine};
    mac().machine.lock()->preferences.erase("keepUsageHistory");
    const Platform given = mac().platform();
    const Platform platform{
        given.clock,       given.tools,        given.kernel,     given.workspace,
        given.networkLink, given.windowServer, given.loginItems, stored,
        given.log,         given.home,         given.root,       given.applicationSupport};
    Monitor monitor{platform, scheduler(), std::nullopt};
    EXPECT_FALSE(monitor.keepHistory()) << "it may have been switched off";
    EXPECT_EQ(stored.boolean("keepUsageHistory"), false) << "at the next start, too";
    AppPreferences preferences{stored};
    AppUpdater updater{{}, nullptr};
    SpeedTester tester{platform, scheduler()};
    QuestionModel questions{scheduler()};
    const SettingsModel model{{monitor, app().router(), app().actions(), preferences, updater,
                               tester, scheduler(), questions, platform}};
    EXPECT_THAT(model.trouble().toStdString(), ::testing::HasSubstr("couldn't be read"));
    QSignalSpy changed{&model, &SettingsModel::troubleChanged};
    stored.now = PreferencesTrouble::unwritable;
    stored.tell();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_THAT(model.trouble().toStdString(), ::testing::HasSubstr("can't be saved"));
    EXPECT_EQ(SettingsModel({app().monitor(), app().router(), app().actions(), app().preferences(),
                             updater, tester, scheduler(), questions, given})
                  .trouble(),
              QString{});
}

TEST_F(SettingsTest, OffersUpdatesWhereThereIsAnUpdater) {
    const Platform platform = mac().platform();
    UpdaterRecord record;
    SpeedTester speedTester{platform, scheduler()};
    QuestionModel questions{scheduler()};
    AppUpdater updater{{"key", "app.pacelet.Pacelet"}, std::make_unique<FakeUpdater>(record)};
    SettingsModel model{{app().monitor(), app().router(), app().actions(), app().preferences(),
                         updater, speedTester, scheduler(), questions, platform}};
    Stage stage{"SettingsView { width: 460; height: implicitHeight; model: settings }",
                {{"settings", QVariant::fromValue(&model)}}};
    EXPECT_TRUE(stage.shows("Check for updates automatically"));
    for (const bool on : {true, false}) {
        stage.click("checksForUpdates");
        EXPECT_EQ(record.automatic, on);
        EXPECT_EQ(stage.property("checksForUpdates", "checked").toBool(), on);
    }
}

} // namespace
} // namespace pacelet::testing
