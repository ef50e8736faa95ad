#include "Hosts/Simulated/Scenarios/Scenarios.h"

#include <array>
#include <fmt/format.h>
#include <utility>

namespace pacelet::Simulated::Scenarios {

namespace {

constexpr std::string_view identifier = "com.google.Chrome";

struct Site {
    std::string_view title;
    std::string_view address;
};

constexpr std::array<Site, 16> sites{{
    {"Inbox (214)", "https://mail.example.com/mail/u/0/#inbox"},
    {"Calendar - Week", "https://calendar.example.com/week"},
    {"Sprint board", "https://tracker.example.com/boards/7?view=sprint"},
    {"Pull requests", "https://code.example.org/pulls"},
    {"Design review notes", "https://docs.example.com/d/4f2a/edit"},
    {"Quarterly figures", "https://sheets.example.com/s/991?tab=Q1"},
    {"News", "https://news.example.net/"},
    {"How to \"quote\" a path\\name", "https://answers.example.org/q/1733?order=votes"},
    {"Recipe: lentil soup", "https://food.example.net/soups/lentil"},
    {"Flights to Lisbon", "https://travel.example.com/search?to=LIS&from=BER"},
    {"Standard library reference", "https://reference.example.org/library/index.html"},
    {"Video: tuning a bicycle", "https://video.example.net/watch?v=b1k3"},
    {"Map of the lakes", "https://maps.example.com/@53.4,12.7,11z"},
    {"Chat", "https://chat.example.com/rooms/general"},
    {"Weather in Berlin", "https://weather.example.net/de/berlin"},
    {"Issue tracker", "https://tracker.example.com/issues?assigned=me"},
}};

/// One of the sites, or a page below it that no other tab shows.
Tab page(Browser& browser, MacBuilder& mac, bool ownPage) {
    const Site& site = sites.at(mac.random().next() % sites.size());
    Tab tab{browser.newID(), std::string{site.title}, std::string{site.address}};
    if (ownPage) {
        tab.title += fmt::format(", page {}", tab.id % 1000);
        tab.url +=
            fmt::format("{}item={}", tab.url.find('?') == std::string::npos ? '?' : '&', tab.id);
    }
    return tab;
}

void openWindow(Browser& browser, MacBuilder& mac, std::string profile, int tabs) {
    TabWindow window;
    window.id = browser.newID();
    window.incognito = profile.empty();
    window.profile = std::move(profile);
    for (int count = 0; count < tabs; ++count) {
        // Every third tab is one of the pages that stand open elsewhere, too.
        window.tabs.push_back(page(browser, mac, count % 3 != 0));
    }
    window.activeTab = window.tabs.size() / 2;
    browser.windows.push_back(std::move(window));
}

} // namespace

/// A browser with 140 tabs in nine windows of three profiles, one of the windows incognito.
void chromeTabs(MacBuilder& mac) {
    mac.boot(macMiniM4, days(4.4));
    mac.usualApplications();
    const RunningApp chrome = mac.run({"Google Chrome", std::string{identifier}, 14, 620, 0});
    const std::string helpers = "Contents/Frameworks/Google Chrome Framework.framework/Helpers/";
    mac.help(chrome, {"Google Chrome Helper (GPU)", 11, 520, 1, "--type=gpu-process", helpers});
    mac.help(chrome, {"Google Chrome Helper", 1.6, 70, 3, "--type=utility", helpers});
    mac.help(chrome, {"Google Chrome Helper (Renderer)", 1.2, 95, 6,
                      "--type=renderer --extension-process", helpers});

    Browser browser;
    browser.bundleIdentifier = identifier;
    browser.name = "Google Chrome";
    browser.hasProfiles = true;
    const std::array<std::pair<const char*, int>, 9> windows{{{"Work", 31},
                                                              {"Work", 22},
                                                              {"Personal", 18},
                                                              {"Work", 17},
                                                              {"Personal", 15},
                                                              {"", 6},
                                                              {"Side project", 12},
                                                              {"Work", 11},
                                                              {"Personal", 8}}};
    for (const auto& [profile, tabs] : windows) {
        openWindow(browser, mac, profile, tabs);
    }
    mac.world().browsers.emplace(identifier, std::move(browser));
    settle(mac.world(), std::string{identifier});
    mac.transfer("Google Chrome Helper", 310'000, 24'000);
    mac.world().vitals.swapUsed = 1200 * mebibyte;
}

} // namespace pacelet::Simulated::Scenarios
