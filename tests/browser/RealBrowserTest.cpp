#include "tests/browser/RealBrowser.h"

#include "Core/Support/Descriptor.h"
#include "PaceletApp/Application/Program.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/browser/Running.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <random>

namespace pacelet::testing {
namespace {

class RealBrowserTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(RealBrowser::isThere()) << "There is no Chromium here.";
        for (std::size_t page = 0; page < 40; ++page) {
            server.pages.push_back({"Page " + std::to_string(page), ""});
        }
        settings.configFolder = folder.path() / "config";
        settings.dataFolder = folder.path() / "data";
        settings.runtimeFolder = folder.path() / "run/pacelet";
        settings.display.clear();
        settings.postToUI = postToUI;
        // Where the bridge, which the browser starts, looks for us.
        std::filesystem::create_directories(folder.path() / "run");
        ::setenv("XDG_RUNTIME_DIR", (folder.path() / "run").c_str(), 1);
        folder.write("config/chromium/Local State",
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

    /// What the browser itself has open, without the incognito window, in words without control
    /// characters.
    std::vector<OpenPage> open() const {
        auto pages = browser.pages();
        std::erase_if(pages, [&](const OpenPage& page) { return page.first == secret; });
        for (auto& [address, title] : pages) {
            std::ranges::replace_if(
                title, [](char byte) { return static_cast<unsigned char>(byte) < 0x20; }, ' ');
        }
        std::ranges::sort(pages);
        return pages;
    }
    bool opensCount(std::size_t count) const {
        return comesTrue([&] { return open().size() == count; });
    }

    /// As if the person had pressed the button.
    static void registerBridge(Running& pacelet) {
        ASSERT_TRUE(pacelet.host.platform().browserExtension->registerProgram(
            std::string{rawValue(chromium)}));
    }

    /// The panel comes to list what the browser has open.
    bool lists(Running& pacelet) const {
        return pacelet.lists([this] { return open(); });
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
    RealBrowser browser{(folder.path() / "config/chromium").string()};
};

TEST_F(RealBrowserTest, IsSetUpListedAndCleanedUp) {
    std::optional<Running> pacelet{std::in_place, settings};
    ASSERT_TRUE(pacelet->comesUp("Chromium isn't running."));
    openAll();
    ASSERT_TRUE(pacelet->press("Try again"));

    // Nothing is written before the user agrees, and then no more has to be pressed.
    const std::string file = "config/chromium/NativeMessagingHosts/app.pacelet.browser.json";
    EXPECT_TRUE(pacelet->comesUp("Chromium shows its tabs only to extensions."));
    EXPECT_EQ(folder.read(file), "");
    ASSERT_TRUE(pacelet->press("Set up Chromium"));
    ASSERT_TRUE(comesTrue([&] { return !folder.read(file).empty(); }));
    ASSERT_TRUE(comesTrue([&] {
        return pacelet->panel()->setupName() == u"registered" ||
               pacelet->panel()->phaseName() == u"loaded";
    }));
    ASSERT_TRUE(comesTrue([&] { return pacelet->panel()->phaseName() == u"loaded"; }));
    ASSERT_TRUE(comesTrue([&] { return browser.bridges().size() == 2; }));
    ASSERT_TRUE(lists(*pacelet));
    ASSERT_TRUE(pacelet->comesUp("40 tabs in 3 windows"));

    ASSERT_TRUE(pacelet->act("Close 5 duplicates", "Close Tabs"));
    ASSERT_TRUE(opensCount(35));
    EXPECT_TRUE(pacelet->comesUp("35 tabs in 3 windows"));
    EXPECT_TRUE(pacelet->probe->shows("No duplicate tabs"));

    pacelet->panel()->select(1, true);
    pacelet->panel()->select(2, true);
    ASSERT_TRUE(pacelet->act("Close selected (2)", "Close Tabs"));
    ASSERT_TRUE(opensCount(33));
    ASSERT_TRUE(pacelet->act("Merge Home windows", "Merge"));
    EXPECT_TRUE(pacelet->comesUp("33 tabs in 2 windows"));
    ASSERT_TRUE(opensCount(33));
    ASSERT_TRUE(lists(*pacelet));
    EXPECT_TRUE(browser.opens(secret));
}

/// Whoever is killed in the middle of whatever the panel does: it comes to an end, and afterwards
/// the panel and the browser agree.
TEST_F(RealBrowserTest, SurvivesTheDeathOfEveryPart) {
    struct Step {
        const char* name;
        std::function<void(Running&)> begin;
    };
    const std::vector<Step> steps{
        {"listing", [](Running& running) { running.panel()->load(); }},
        {"closing",
         [](Running& running) {
             running.panel()->select(1, true);
             running.panel()->closeSelected();
             running.question()->confirm();
         }},
        {"merging",
         [](Running& running) {
             running.panel()->merge();
             running.question()->confirm();
         }},
    };
    std::mt19937 random{3};
    const auto inTheMiddle = [&] { QTest::qWait(static_cast<int>(random() % 40)); };
    std::optional<Running> pacelet{std::in_place, settings};
    registerBridge(*pacelet);
    for (const auto& [name, begin] : steps) {
        SCOPED_TRACE(name);
        const auto secondWindow = [&] {
            const auto before = open().size();
            openWindow("Default", before, 4, 0);
            return opensCount(before + 4) && lists(*pacelet);
        };
        openWindow("Default", 0, 5, 0);
        ASSERT_TRUE(opensCount(5));
        ASSERT_TRUE(lists(*pacelet));

        // Bridges outlive the program, and serve the next one.
        ASSERT_TRUE(secondWindow());
        const auto bridges = browser.bridges();
        EXPECT_EQ(bridges.size(), 1U);
        begin(*pacelet);
        inTheMiddle();
        pacelet.reset();
        pacelet.emplace(settings);
        ASSERT_TRUE(lists(*pacelet));
        EXPECT_EQ(browser.bridges(), bridges);

        // A bridge that dies is replaced, at once where it had stood for a while.
        QTest::qWait(10'000);
        ASSERT_TRUE(secondWindow());
        begin(*pacelet);
        inTheMiddle();
        ::kill(bridges.front(), SIGKILL);
        ASSERT_TRUE(pacelet->rests());
        ASSERT_TRUE(comesTrue([&] { return browser.bridges() != bridges; }));
        ASSERT_TRUE(lists(*pacelet));

        ASSERT_TRUE(secondWindow());
        const auto last = browser.bridges();
        begin(*pacelet);
        inTheMiddle();
        browser.kill();
        ASSERT_TRUE(pacelet->rests());
        EXPECT_TRUE(comesTrue([&] {
            return std::ranges::none_of(last, [](int pid) { return ::kill(pid, 0) == 0; });
        }));
        pacelet->panel()->load();
        EXPECT_TRUE(pacelet->comesUp("Chromium isn't running."));
    }
}

TEST_F(RealBrowserTest, CarriesHostileTitlesAndAddressesBothWays) {
    std::vector<std::string> pieces;
    for (const auto& [piece] : rows<1>("Browser", "pieces of hostile text")) {
        pieces.push_back(piece);
    }
    std::mt19937 random{7};
    const auto hostile = [&] {
        std::string text;
        for (auto count = random() % 30; count > 0; --count) {
            text += pieces[random() % pieces.size()];
        }
        return text;
    };
    server.pages.clear();
    for (std::size_t page = 0; page < 200; ++page) {
        const std::string title = hostile();
        server.pages.push_back({std::to_string(page) + title, '?' + hostile() + '#' + hostile()});
    }
    Running pacelet{settings};
    registerBridge(pacelet);
    for (std::size_t first = 0; first < 200; first += 50) {
        openWindow("Default", first, 50, 0);
        ASSERT_TRUE(opensCount(first + 50));
    }
    ASSERT_TRUE(comesTrue([&] {
        return std::ranges::none_of(
            open(), [](const OpenPage& page) { return page.first.find('?') == std::string::npos; });
    }));
    ASSERT_TRUE(lists(pacelet));
    const auto before = open();
    ASSERT_TRUE(pacelet.act("Merge into one window", "Merge"));
    ASSERT_TRUE(comesTrue([&] { return open() == before; }));
    ASSERT_TRUE(lists(pacelet));
    EXPECT_TRUE(pacelet.comesUp("200 tabs in 1 window"));
}

/// "make pictures" asks for it.
TEST_F(RealBrowserTest, DISABLED_SitsForItsPicture) {
    const auto titles = rows<2>("Browser", "pages for a picture");
    server.pages.clear();
    std::vector<std::string> hosts;
    for (const auto& [host, title] : titles) {
        hosts.push_back(host);
        server.pages.push_back({title, ""});
    }
    const auto addresses = [&](std::initializer_list<std::size_t> pages) {
        const std::string local = server.address(0);
        std::vector<std::string> arguments{"--new-window", "--host-resolver-rules=MAP *.example " +
                                                               local.substr(7, local.size() - 9)};
        for (const std::size_t page : pages) {
            arguments.push_back("http://" + hosts[page] + '/' + std::to_string(page));
        }
        return arguments;
    };
    Running pacelet{settings};
    registerBridge(pacelet);
    browser.open(addresses({0, 1, 2, 3, 4, 1, 5}));
    ASSERT_TRUE(opensCount(7));
    browser.open(addresses({6, 7, 8, 9, 3, 10, 11}));
    ASSERT_TRUE(opensCount(14));
    ASSERT_TRUE(lists(pacelet));
    ASSERT_TRUE(pacelet.comesUp("Close 2 duplicates"));
    ASSERT_TRUE(comesTrue([&] { return pacelet.panel()->extensions().has_value(); }));
    pacelet.panel()->select(3, true);
    pacelet.panel()->select(5, true);
    ASSERT_TRUE(pacelet.comesUp("Close selected (2)"));
    const char* const file = std::getenv("PACELET_PICTURE");
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(pacelet.application.window()->grabWindow().save(file));
}

/// For figures: with thousands of tabs a browser takes long to come up.
TEST_F(RealBrowserTest, DISABLED_ListsManyTabs) {
    const char* const wanted = std::getenv("PACELET_TABS");
    const auto tabs = static_cast<std::size_t>(std::atoi(wanted != nullptr ? wanted : "500"));
    server.pages.clear();
    for (std::size_t page = 0; page < tabs; ++page) {
        server.pages.push_back(
            {"Page number " + std::to_string(page), "?a=" + std::to_string(page)});
    }
    Running pacelet{settings};
    registerBridge(pacelet);
    for (std::size_t first = 0; first < tabs; first += 250) {
        openWindow("Default", first, std::min<std::size_t>(250, tabs - first), 0);
        ASSERT_TRUE(opensCount(std::min(first + 250, tabs)));
    }
    ASSERT_TRUE(lists(pacelet));
    const Platform platform = pacelet.host.platform();
    const BrowserController controller{platform};
    std::vector<double> took;
    for (int run = 0; run < 15; ++run) {
        QElapsedTimer clock;
        clock.start();
        ASSERT_EQ(BrowserListing{controller.windows(chromium)}.tabs, tabs);
        took.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::ranges::sort(took);
    fmt::print("{} tabs: {:.0f} ms at best, {:.0f} ms in the middle, {:.0f} ms at worst\n", tabs,
               took.front(), took[took.size() / 2], took.back());
}

} // namespace
} // namespace pacelet::testing
