#include "PaceletApp/BrowserPanel/BrowserPanelModel.h"

#include "tests/PaceletApp/Support/ApplicationRig.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QClipboard>
#include <QGuiApplication>

#include <atomic>

namespace pacelet::testing {
namespace {

const std::string chrome = "com.google.Chrome";
const std::string primerKey = "primer.automation." + chrome;
constexpr const char* osascript = "/usr/bin/osascript";

/// The sheet over the window, on the simulated Mac whose browser has 140 tabs.
class BrowserPanelTest : public ApplicationRig {
protected:
    void SetUp() override {
        launch("chrome-tabs");
        open();
        pass(10);
    }

    /// Opens the sheet of a user who has accepted its explanation.
    void show() {
        mac().preferences.setBoolean(primerKey, true);
        app().router().setBrowser(ChromiumBrowser::chrome);
        settle();
    }

    BrowserPanelModel* model() {
        auto* const root = app().window()->property("model").value<RootModel*>();
        return qobject_cast<BrowserPanelModel*>(root->sheet()->content());
    }

    std::vector<Simulated::TabWindow> windows() {
        return mac().machine.lock()->browsers.at(chrome).windows;
    }

    std::size_t tabs() {
        std::size_t sum = 0;
        for (const Simulated::TabWindow& window : windows()) {
            sum += window.tabs.size();
        }
        return sum;
    }

    /// Leaves the browser with just these windows of the default profile.
    void makeWindows(const std::vector<std::vector<std::string>>& titles) {
        const auto world = mac().machine.lock();
        Simulated::Browser& browser = world->browsers.at(chrome);
        browser.windows.clear();
        for (const auto& window : titles) {
            Simulated::TabWindow made;
            made.id = browser.newID();
            for (const std::string& title : window) {
                const std::int64_t id = browser.newID();
                made.tabs.push_back({id, title, "https://example.com/" + std::to_string(id)});
            }
            browser.windows.push_back(std::move(made));
        }
    }

    void quitBrowser() {
        const auto world = mac().machine.lock();
        for (const Simulated::RunningApp& running : world->running) {
            if (running.bundle.bundleIdentifier == chrome) {
                return Simulated::endApplication(*world, running.number);
            }
        }
    }

    void inject(Simulated::Failure failure) { mac().machine.inject(std::move(failure)); }
    bool primerAccepted() { return mac().preferences.boolean(primerKey).value_or(false); }

    /// Presses the button, and agrees to what is asked.
    void act(const char* button, const char* agreement) {
        probe->clickText(QString::fromUtf8(button));
        EXPECT_TRUE(comesUp(agreement));
        pass(QuestionModel::calm.count()); // it may stand where another one stood
        probe->clickText(QString::fromUtf8(agreement));
        EXPECT_TRUE(model()->working());
    }
};

TEST_F(BrowserPanelTest, ExplainsItselfBeforeItFirstTouchesTheBrowser) {
    pass(60);
    probe->clickText("Review tabs");
    EXPECT_TRUE(comesUp("Let Pacelet see your Google Chrome tabs"));
    probe->clickText("Not now");
    EXPECT_TRUE(goesAway("Let Pacelet see your Google Chrome tabs"));
    EXPECT_EQ(app().router().browser(), std::nullopt);
    EXPECT_FALSE(primerAccepted());

    app().router().setBrowser(ChromiumBrowser::chrome);
    EXPECT_TRUE(comesUp("Continue"));
    EXPECT_EQ(calls(osascript), 0);
    probe->press(Qt::Key_Return);
    EXPECT_TRUE(primerAccepted());
    EXPECT_TRUE(comesUp("140 tabs in 9 windows"));
    probe->press(Qt::Key_Escape);
    EXPECT_TRUE(goesAway("140 tabs in 9 windows"));
    EXPECT_EQ(app().router().browser(), std::nullopt);

    app().router().setBrowser(ChromiumBrowser::chrome);
    EXPECT_TRUE(comesUp("140 tabs in 9 windows"));
    EXPECT_EQ(calls(osascript), 2);
    // Another browser has an explanation of its own, even on the heels of the first.
    app().router().setBrowser({});
    app().router().setBrowser(ChromiumBrowser::brave);
    EXPECT_TRUE(comesUp("Let Pacelet see your Brave Browser tabs"));
}

TEST_F(BrowserPanelTest, EveryErrorLeadsToItsMessageAndBack) {
    const char* const unread = "Couldn't read your tabs.";
    const Table<Simulated::Failure, const char*, const char*> rows = {
        {Simulated::ScriptFails{-1728, "no such window"}, "failed", unread},
        {Simulated::ScriptFails{-600, "Not running."}, "notRunning",
         "Google Chrome isn't running."},
        {Simulated::ToolMissing{osascript}, "failed", unread},
        {Simulated::AutomationRefused{chrome}, "notPermitted", "Open Automation settings"},
    };
    inject(Simulated::ToolMissing{osascript});
    show();
    for (const auto& [failure, phase, heading] : rows) {
        mac().machine.clearFailures();
        inject(failure);
        EXPECT_TRUE(comesUp("Try again"));
        probe->clickText("Try again");
        EXPECT_TRUE(comesUp(heading));
        EXPECT_EQ(model()->phaseName(), phase);
        EXPECT_TRUE(probe->shows("Close"));
        EXPECT_EQ(probe->shows("Open Automation settings"),
                  model()->phaseName() == u"notPermitted");
    }
    probe->clickText("Open Automation settings");
    EXPECT_THAT(
        openedURLs(),
        Contains("x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"));
    mac().machine.clearFailures();
    probe->press(Qt::Key_Tab);
    probe->press(Qt::Key_Return);
    EXPECT_TRUE(comesUp("140 tabs in 9 windows"));
}

/// A browser that has to be told of us, and says when it is there.
class PlayedExtension final : public BrowserExtension {
public:
    ExtensionSetup setup(const std::string&) override {
        return isRegistered ? ExtensionSetup::registered : ExtensionSetup::unknown;
    }
    bool registerProgram(const std::string&) override {
        ++writes;
        return isRegistered = isWritable;
    }
    std::string folder() override { return "/opt/the extension"; }
    ObserverHandle observe(std::function<void()> changed) override {
        auto handle = std::make_shared<std::function<void()>>(std::move(changed));
        watcher = handle;
        return handle;
    }

    bool isWritable = false;
    std::atomic<bool> isRegistered = false;
    std::atomic<int> writes = 0;
    std::weak_ptr<std::function<void()>> watcher;
};

TEST_F(BrowserPanelTest, LeadsToTheExtensionWhereABrowserNeedsOne) {
    PlayedExtension extension;
    probe.reset();
    session.emplace(Simulated::makeScenario("chrome-tabs", 1), Session::bundledCatalog(),
                    OperatingSystem::linuxDesktop, &extension);
    open();
    app().router().setBrowser(ChromiumBrowser::chrome);
    EXPECT_TRUE(comesUp("Continue"));
    (*extension.watcher.lock())();
    settle();
    EXPECT_EQ(calls(osascript), 0) << "nothing is read before the user agrees";
    app().router().setBrowser({});
    EXPECT_TRUE(goesAway("Continue"));
    inject(Simulated::AutomationRefused{chrome});
    show();
    EXPECT_TRUE(comesUp("Set up Google Chrome"));
    EXPECT_FALSE(probe->shows("Open Automation settings"));
    EXPECT_EQ(extension.writes, 0);
    probe->clickText("Set up Google Chrome");
    EXPECT_TRUE(model()->working());
    EXPECT_TRUE(comesUp("The file in Google Chrome's settings folder couldn't be written."));
    probe->clickText("Try again");
    extension.isWritable = true;
    EXPECT_TRUE(comesUp("Set up Google Chrome"));
    probe->press(Qt::Key_Return);
    EXPECT_TRUE(comesUp("Add Pacelet's extension to Google Chrome."));
    EXPECT_THAT(model()->failure().body.toStdString(),
                ::testing::HasSubstr("/opt/the extension\n"));
    EXPECT_EQ(extension.writes, 2);
    probe->clickText("Copy folder");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "/opt/the extension");

    mac().machine.clearFailures();
    (*extension.watcher.lock())();
    EXPECT_TRUE(comesUp("140 tabs in 9 windows"));
    app().router().setBrowser({});
    EXPECT_TRUE(QTest::qWaitFor([&] { return extension.watcher.expired(); }, patience));
    session.reset();
}

TEST_F(BrowserPanelTest, ClosesDuplicatesOnceConfirmed) {
    show();
    EXPECT_TRUE(probe->shows("Extensions: 6 running, 726.7 MB"));
    probe->clickText("Close 25 duplicates");
    EXPECT_TRUE(comesUp("Close 25 duplicate tabs?"));
    EXPECT_TRUE(probe->shows("and 20 more"));
    probe->press(Qt::Key_Escape);
    EXPECT_TRUE(goesAway("Close 25 duplicate tabs?"));
    EXPECT_EQ(tabs(), 140U);
    EXPECT_TRUE(probe->shows("140 tabs in 9 windows"));

    probe->clickText("Close 25 duplicates");
    EXPECT_TRUE(comesUp("Close Tabs"));
    // The key that agrees by habit does no harm.
    probe->press(Qt::Key_Return);
    EXPECT_TRUE(goesAway("Close Tabs"));
    EXPECT_EQ(tabs(), 140U);

    act("Close 25 duplicates", "Close Tabs");
    EXPECT_TRUE(comesUp("115 tabs in 9 windows"));
    EXPECT_TRUE(probe->shows("No duplicate tabs"));
    EXPECT_EQ(tabs(), 115U);
    EXPECT_FALSE(model()->working());
    for (const Simulated::TabWindow& window : windows()) {
        EXPECT_TRUE(!window.incognito || window.tabs.size() == 6);
    }
}

TEST_F(BrowserPanelTest, AFailedCloseKeepsTheSelection) {
    makeWindows({{"One", "Two", "Three"}});
    show();
    EXPECT_THAT(probe->texts(),
                IsSupersetOf({"3 tabs in 1 window", "· 3 tabs", "Active", "No duplicate tabs"}));
    probe->clickText("One");
    probe->clickText("Three");
    EXPECT_TRUE(probe->shows("Close selected (2)"));
    probe->clickText("Close selected (2)");
    EXPECT_TRUE(comesUp("Close 2 tabs?"));
    inject(Simulated::ScriptFails{-1728, "gone"});
    probe->clickText("Close Tabs");
    EXPECT_TRUE(comesUp("Couldn't read your tabs."));
    EXPECT_EQ(model()->windows().size(), 1U);
    EXPECT_FALSE(model()->working());
    mac().machine.clearFailures();
    {
        const auto world = mac().machine.lock();
        auto& browser = world->browsers.at(chrome);
        browser.closeTab(browser.windows[0].id, browser.windows[0].tabs[0].id);
    }
    probe->clickText("Try again");
    EXPECT_TRUE(comesUp("Close selected (1)"));
    EXPECT_EQ(model()->selected().size(), 2U);
    act("Close selected (1)", "Close Tabs");
    EXPECT_TRUE(comesUp("1 tabs in 1 window"));
    EXPECT_TRUE(model()->selected().empty());
    EXPECT_THAT(probe->texts(), Not(Contains("Close selected (0)")));
    EXPECT_EQ(windows()[0].tabs[0].title, "Two");
}

TEST_F(BrowserPanelTest, IncognitoTabsStayOutOfReach) {
    makeWindows({{"Secret"}, {"Open"}});
    mac().machine.lock()->browsers.at(chrome).windows[0].incognito = true;
    show();
    EXPECT_TRUE(probe->shows("Incognito (not touched)"));
    EXPECT_THAT(probe->texts(), Contains(::testing::EndsWith("windows are never touched.")));
    probe->clickText("Secret");
    for (const int row : {1, 0, 4, 99, -1}) {
        model()->select(row, true);
    }
    EXPECT_TRUE(model()->selected().empty());
    probe->clickText("Open");
    EXPECT_EQ(model()->selected().size(), 1U);
    const QAbstractItemModel& rows = *model()->rows();
    EXPECT_TRUE(rows.index(3, 0).data(rows.roleNames().key("ticked")).toBool());
    probe->clickText("Open");
    EXPECT_TRUE(model()->selected().empty());
}

TEST_F(BrowserPanelTest, MergesTheWindowsOfTheLargestProfile) {
    show();
    act("Merge Work windows", "Merge");
    EXPECT_TRUE(comesUp("140 tabs in 6 windows"));
    EXPECT_EQ(windows().size(), 6U);

    makeWindows({{"One"}, {"Two"}});
    model()->load();
    EXPECT_TRUE(comesUp("Merge into one window"));
    probe->clickText("Merge into one window");
    EXPECT_TRUE(comesUp("Merge into one window?"));
    quitBrowser();
    pass(QuestionModel::calm.count());
    probe->clickText("Merge");
    EXPECT_TRUE(comesUp("Google Chrome isn't running."));
}

TEST_F(BrowserPanelTest, OneActionAtATime) {
    show();
    probe->clickText("Memory Saver settings");
    EXPECT_TRUE(model()->working());
    EXPECT_FALSE(probe->item("actions")->isEnabled());
    settle();
    EXPECT_FALSE(model()->working());
    const auto all = windows();
    EXPECT_EQ(all[0].tabs.back().url, "chrome://settings/performance");
    // It says nothing when it fails.
    inject(Simulated::AutomationRefused{chrome});
    probe->clickText("Memory Saver settings");
    settle();
    EXPECT_FALSE(model()->working());
    EXPECT_EQ(model()->phaseName(), "loaded");
}

TEST_F(BrowserPanelTest, ExtensionsThatCannotBeCountedAreNoFailure) {
    inject(Simulated::ToolMissing{"/bin/ps"});
    show();
    EXPECT_TRUE(comesUp("Extensions: 0 running, 0 KB"));
    app().router().setBrowser({});
    EXPECT_TRUE(goesAway("Done"));
    settle();
    std::erase_if(mac().machine.lock()->installed, [](const Simulated::InstalledApp& app) {
        return app.bundleIdentifier == chrome;
    });
    show();
    EXPECT_EQ(model()->extensions(), std::nullopt);
}

TEST_F(BrowserPanelTest, WorksByKeysAlone) {
    makeWindows({{"One", "Two"}, {"Three"}});
    show();
    for (const int key : {Qt::Key_Down, Qt::Key_Space, Qt::Key_Down, Qt::Key_Return}) {
        probe->press(key);
    }
    EXPECT_TRUE(probe->shows("Close selected (2)"));
    probe->press(Qt::Key_End);
    probe->press(Qt::Key_Space);
    EXPECT_TRUE(probe->shows("Close selected (3)"));
    probe->press(Qt::Key_Home);
    probe->press(Qt::Key_Space); // the head of a window
    EXPECT_EQ(model()->selected().size(), 3U);
    probe->press(Qt::Key_Tab); // round to "Done" and on to the actions
    probe->press(Qt::Key_Tab);
    probe->press(Qt::Key_Space);
    EXPECT_TRUE(comesUp("Close 3 tabs?"));
    probe->press(Qt::Key_Escape);
    EXPECT_TRUE(goesAway("Close 3 tabs?"));
    EXPECT_TRUE(probe->shows("3 tabs in 2 windows"));
    probe->press(Qt::Key_Escape);
    EXPECT_TRUE(goesAway("3 tabs in 2 windows"));
}

TEST_F(BrowserPanelTest, ALateListingIsDropped) {
    const std::size_t sleeps = scheduler().pendingSleeps();
    mac().preferences.setBoolean(primerKey, true);
    app().router().setBrowser(ChromiumBrowser::chrome);
    EXPECT_EQ(model()->phaseName(), "loading");
    app().router().setBrowser({});
    EXPECT_TRUE(QTest::qWaitFor([&] { return model() == nullptr; }, patience));
    settle();
    EXPECT_EQ(calls(osascript), 1);
    EXPECT_EQ(scheduler().pendingSleeps(), sleeps);
}

TEST_F(BrowserPanelTest, HoldsAnyNumberOfTabsWithAnyTitle) {
    makeWindows({});
    show();
    EXPECT_THAT(probe->texts(), IsSupersetOf({"0 tabs in 0 windows", "No duplicate tabs"}));
    EXPECT_EQ(model()->rows()->rowCount(), 0);

    std::vector<std::string> titles{std::string(300, 'M'), "تقرير الربع الأول", "🎉 Ideas", ""};
    titles.resize(2500, "Page");
    makeWindows({titles, titles});
    model()->load();
    EXPECT_TRUE(comesUp("5000 tabs in 2 windows"));
    EXPECT_THAT(probe->texts(), IsSupersetOf({titles[0], titles[1], titles[2]}));
    auto* const list = probe->item("tabs");
    auto* const content = list->property("contentItem").value<QQuickItem*>();
    EXPECT_LT(content->childItems().size(), 60);
    EXPECT_LE(probe->edges(QString::fromStdString(titles[0])).right(), 880 - 28);
    // The title of a tab in another script begins where all others begin.
    EXPECT_EQ(probe->edges(QString::fromStdString(titles[1])).left(),
              probe->edges(QString::fromStdString(titles[2])).left());
    probe->press(Qt::Key_End);
    probe->press(Qt::Key_Space);
    EXPECT_TRUE(probe->shows("Close selected (1)"));
    EXPECT_LT(content->childItems().size(), 60);
    EXPECT_TRUE(model()->selected().contains(model()->windows()[1].tabs.back().id));
    settle();
    act("Close selected (1)", "Close Tabs");
    EXPECT_TRUE(comesUp("4999 tabs in 2 windows"));
    // The list comes back where the user left it.
    EXPECT_THAT(probe->texts(), Not(Contains(titles[2])));
}

} // namespace
} // namespace pacelet::testing
