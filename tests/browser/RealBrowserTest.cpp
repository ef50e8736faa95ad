#include "tests/browser/RealBrowser.h"

#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/LinuxHost.h"
#include "PaceletApp/AppPreferences/AppPreferences.h"
#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Application/Program.h"
#include "PaceletApp/BrowserPanel/BrowserPanelModel.h"
#include "PaceletApp/RootView/RootModel.h"
#include "PaceletApp/Router/Router.h"
#include "PaceletApp/Scheduler/RealScheduler.h"
#include "tests/PaceletApp/Support/WindowProbe.h"
#include "tests/Support/TemporaryFolder.h"
#include "tools/session/Session.h"

#include <QQuickWindow>

#include <algorithm>
#include <gmock/gmock.h>
#include <optional>
#include <random>

namespace pacelet::testing {
namespace {

constexpr auto chromium = ChromiumBrowser::chromium;

/// The program as the user has it, on this machine, with its window.
class Running {
public:
    explicit Running(const Linux::LinuxSettings& settings)
        : host{settings},
          scheduler{host.clock()},
          application{host.platform(), scheduler, Session::bundledCatalog()} {
        application.preferences().setOnboarded(true);
        application.setReducedMotion(true);
        application.start();
        application.showWindow();
        probe.emplace(*application.window());
        host.platform().preferences.setBoolean(
            "primer.automation." + std::string{rawValue(chromium)}, true);
        application.router().setBrowser(chromium);
    }

    BrowserPanelModel* panel() {
        auto* const root = application.window()->property("model").value<RootModel*>();
        return qobject_cast<BrowserPanelModel*>(root->sheet()->content());
    }

    bool comesUp(const std::string& text) {
        return comesTrue([&] { return probe->shows(text); });
    }

    /// Presses the button, and agrees to what is asked.
    void act(const char* button, const char* agreement) {
        ASSERT_TRUE(comesUp(button)) << button;
        probe->clickText(button);
        ASSERT_TRUE(comesUp(agreement)) << agreement;
        probe->clickText(agreement);
        ASSERT_TRUE(comesTrue([&] { return panel()->confirm() == std::nullopt; }));
        ASSERT_TRUE(comesTrue([&] { return !panel()->working(); }));
    }

    std::vector<OpenPage> listed() {
        std::vector<OpenPage> pages;
        for (const BrowserWindow& window : panel()->windows()) {
            for (const BrowserTab& tab : window.tabs) {
                if (tab.url.starts_with("http")) {
                    pages.emplace_back(tab.url, tab.title);
                }
            }
        }
        std::sort(pages.begin(), pages.end());
        return pages;
    }

    /// Reads the tabs until the list is as long.
    bool lists(std::size_t pages) {
        return comesTrue([&] {
            if (panel()->phaseName() != u"loading" && !panel()->working() &&
                listed().size() != pages) {
                panel()->load();
            }
            return panel()->phaseName() == u"loaded" && listed().size() == pages;
        });
    }

    Linux::LinuxHost host;
    RealScheduler scheduler;
    Application application;
    std::optional<WindowProbe> probe;
};

class RealBrowserTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(RealBrowser::isThere());
        for (std::size_t page = 0; page < 40; ++page) {
            server.titles.push_back("Page " + std::to_string(page));
        }
        settings.configFolder = folder.path() / "config";
        settings.dataFolder = folder.path() / "data";
        settings.runtimeFolder = folder.path() / "run/pacelet";
        settings.display.clear();
        settings.postToUI = postToUI;
        // Where the bridge, which the browser starts, looks for us.
        std::filesystem::create_directories(folder.path() / "run");
        ::setenv("XDG_RUNTIME_DIR", (folder.path() / "run").c_str(), 1);
        folder.write("browser/Local State",
                     R"({"profile":{"info_cache":{"Default":{"name":"Home"},)"
                     R"("Work":{"name":"Work"}}}})");
    }

    /// A window of the profile with pages, the last ones of which are there twice.
    void openWindow(const std::string& profile, std::size_t first, std::size_t count,
                    std::size_t twice) {
        std::vector<std::string> arguments{"--profile-directory=" + profile, "--new-window"};
        for (std::size_t page = 0; page < count + twice; ++page) {
            arguments.push_back(server.address(first + page - (page < count ? 0 : twice)));
        }
        browser.open(arguments);
    }

    /// What the browser itself has open, without the incognito window.
    std::vector<OpenPage> open() const {
        auto pages = browser.pages();
        std::erase_if(pages, [&](const OpenPage& page) { return page.first == secret; });
        return pages;
    }
    bool opensCount(std::size_t count) const {
        return comesTrue([&] { return open().size() == count; });
    }

    /// Three windows with 40 tabs in two profiles, five of them twice, and an incognito window.
    void openAll() {
        openWindow("Default", 0, 15, 0);
        ASSERT_TRUE(opensCount(15));
        openWindow("Default", 15, 10, 5);
        ASSERT_TRUE(opensCount(30));
        openWindow("Work", 25, 10, 0);
        ASSERT_TRUE(opensCount(40));
        browser.open({"--profile-directory=Default", "--incognito", secret});
        ASSERT_TRUE(comesTrue([&] { return browser.opens(secret); }));
    }

    TemporaryFolder folder;
    Linux::LinuxSettings settings;
    PageServer server;
    const std::string secret = server.address(39);
    RealBrowser browser{(folder.path() / "browser").string()};
};

TEST_F(RealBrowserTest, IsSetUpListedAndCleanedUp) {
    std::optional<Running> pacelet{std::in_place, settings};
    ASSERT_TRUE(pacelet->comesUp("Chromium isn't running."));
    openAll();
    pacelet->probe->clickText("Try again");

    // Nothing is written before the user agrees, and then no more has to be pressed.
    const std::string file = "browser/NativeMessagingHosts/app.pacelet.browser.json";
    ASSERT_TRUE(pacelet->comesUp("Set up Chromium"));
    EXPECT_EQ(folder.read(file), "");
    pacelet->probe->clickText("Set up Chromium");
    ASSERT_TRUE(comesTrue([&] { return folder.read(file) != ""; }));
    ASSERT_TRUE(pacelet->comesUp("Add Pacelet's extension to Chromium.") ||
                pacelet->panel()->phaseName() == u"loaded");
    ASSERT_TRUE(comesTrue([&] { return pacelet->panel()->phaseName() == u"loaded"; }));
    ASSERT_TRUE(comesTrue([&] { return browser.bridges().size() == 2; }));
    ASSERT_TRUE(pacelet->lists(40));
    EXPECT_EQ(pacelet->listed(), open());
    ASSERT_TRUE(pacelet->comesUp("40 tabs in 3 windows"));

    pacelet->act("Close 5 duplicates", "Close Tabs");
    ASSERT_TRUE(opensCount(35));
    EXPECT_TRUE(pacelet->comesUp("35 tabs in 3 windows"));
    EXPECT_TRUE(pacelet->probe->shows("No duplicate tabs"));

    pacelet->panel()->select(1, true);
    pacelet->panel()->select(2, true);
    pacelet->act("Close selected (2)", "Close Tabs");
    ASSERT_TRUE(opensCount(33));
    pacelet->act("Merge Home windows", "Merge");
    EXPECT_TRUE(pacelet->comesUp("33 tabs in 2 windows"));
    ASSERT_TRUE(pacelet->lists(33));
    EXPECT_TRUE(comesTrue([&] { return pacelet->listed() == open() || !pacelet->lists(33); }));
    EXPECT_TRUE(browser.opens(secret));

    // Bridges outlive the program, and serve the next one.
    const auto bridges = browser.bridges();
    pacelet.reset();
    pacelet.emplace(settings);
    ASSERT_TRUE(comesTrue([&] { return pacelet->panel()->phaseName() != u"loading"; }));
    ASSERT_TRUE(pacelet->lists(33));
    EXPECT_EQ(browser.bridges(), bridges);
    // A bridge that dies takes its tabs along, and a new one is started where the old did well.
    for (const int bridge : bridges) {
        ::kill(bridge, SIGKILL);
    }
    ASSERT_TRUE(comesTrue([&] { return browser.bridges() != bridges; }));
    ASSERT_TRUE(pacelet->lists(33));
    browser.kill();
    pacelet->panel()->load();
    EXPECT_TRUE(pacelet->comesUp("Chromium isn't running."));
    EXPECT_FALSE(pacelet->panel()->working());
}

TEST_F(RealBrowserTest, TellsHostileTitlesAsTheyAre) {
    const std::vector<std::string> pieces{"\"",
                                          "\\",
                                          "\n",
                                          "\x1E",
                                          "\x1F",
                                          "\t",
                                          "end tell",
                                          "<b>",
                                          "&amp;",
                                          "{}",
                                          "%s",
                                          "'",
                                          " - Chromium - Work",
                                          "🎉",
                                          "\u202E",
                                          "\u200B",
                                          "تقرير",
                                          "数字",
                                          "e\u0301",
                                          "A",
                                          " ",
                                          "\u00A0",
                                          "\x7F",
                                          "\u2028",
                                          "$(id)",
                                          ";"};
    std::mt19937 random{7};
    server.titles.clear();
    while (server.titles.size() < 200) {
        std::string title = std::to_string(server.titles.size()) + " ";
        for (auto count = random() % 30; count > 0; --count) {
            title += pieces[random() % pieces.size()];
        }
        server.titles.push_back(title);
    }
    Running pacelet{settings};
    ASSERT_TRUE(pacelet.comesUp("Chromium isn't running."));
    openWindow("Default", 0, 1, 0);
    ASSERT_TRUE(opensCount(1));
    pacelet.probe->clickText("Try again");
    ASSERT_TRUE(pacelet.comesUp("Set up Chromium"));
    pacelet.probe->clickText("Set up Chromium");
    ASSERT_TRUE(comesTrue([&] { return pacelet.panel()->phaseName() == u"loaded"; }));
    for (std::size_t first = 1; first < 200; first += 50) {
        openWindow("Default", first, std::min<std::size_t>(50, 200 - first), 0);
    }
    ASSERT_TRUE(opensCount(200));
    ASSERT_TRUE(comesTrue([&] {
        const auto pages = open();
        return std::ranges::all_of(pages, [](const OpenPage& page) {
            return page.second.find(' ') != std::string::npos || !page.second.empty();
        });
    }));
    ASSERT_TRUE(pacelet.lists(200));
    auto expected = open();
    for (OpenPage& page : expected) {
        std::ranges::replace_if(
            page.second, [](char byte) { return static_cast<unsigned char>(byte) < 0x20; }, ' ');
    }
    EXPECT_EQ(pacelet.listed(), expected);
}

} // namespace
} // namespace pacelet::testing
