#include "Hosts/Simulated/Model/Browser.h"

#include "Hosts/Simulated/Model/Random.h"
#include "Hosts/Simulated/Model/World.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace pacelet::Simulated {

namespace {

template<typename Item>
Item* findByID(std::vector<Item>& items, std::int64_t id) {
    const auto found =
        std::find_if(items.begin(), items.end(), [id](const Item& item) { return item.id == id; });
    return found != items.end() ? &*found : nullptr;
}

} // namespace

Tab* TabWindow::tab(std::int64_t tabID) {
    return findByID(tabs, tabID);
}

TabWindow* Browser::window(std::int64_t windowID) {
    return findByID(windows, windowID);
}

std::string Browser::windowName(const TabWindow& window) const {
    const std::string page =
        window.tabs.empty() ? "New Tab" : window.tabs.at(window.activeTab).title;
    const std::string named = page + " - " + name;
    if (window.incognito) {
        return named + " (Incognito)";
    }
    return hasProfiles && !window.profile.empty() ? named + " - " + window.profile : named;
}

TabWindow& Browser::openWindow() {
    TabWindow window;
    window.id = newID();
    window.tabs.push_back({newID(), "New Tab", "chrome://newtab/"});
    return *windows.insert(windows.begin(), std::move(window));
}

Tab& Browser::openTab(TabWindow& window, std::string url) {
    std::string title = url;
    window.tabs.push_back({newID(), std::move(title), std::move(url)});
    window.activeTab = window.tabs.size() - 1;
    return window.tabs.back();
}

void Browser::closeTab(std::int64_t windowID, std::int64_t tabID) {
    TabWindow* const holder = window(windowID);
    if (holder == nullptr) {
        return;
    }
    const Tab* const tab = holder->tab(tabID);
    if (tab == nullptr) {
        return;
    }
    const auto index = static_cast<std::size_t>(tab - holder->tabs.data());
    holder->tabs.erase(holder->tabs.begin() + static_cast<std::ptrdiff_t>(index));
    if (holder->activeTab > index || holder->activeTab == holder->tabs.size()) {
        holder->activeTab = holder->activeTab == 0 ? 0 : holder->activeTab - 1;
    }
    // A window without tabs closes, as a browser's does.
    if (holder->tabs.empty()) {
        closeWindow(windowID);
    }
}

void Browser::closeWindow(std::int64_t windowID) {
    std::erase_if(windows, [windowID](const TabWindow& window) { return window.id == windowID; });
}

namespace {

constexpr std::string_view tabArguments = "--type=renderer --lang=en-US";

/// What a page costs depends on its address, so that it costs the same in every run.
Process renderer(const RunningApp& app, const Tab& tab, Seconds awake) {
    const std::string helper = app.bundle.name + " Helper (Renderer)";
    const std::uint64_t hash = stableHash(tab.url);
    Process process;
    process.ppid = app.mainPid;
    process.user = ann;
    process.path = app.bundle.path + "/Contents/Frameworks/" + app.bundle.name +
                   " Framework.framework/Helpers/" + helper + ".app/Contents/MacOS/" + helper;
    process.arguments = tabArguments;
    process.load = {.percent = 0.05 + static_cast<double>(hash % 40) / 100,
                    .swing = 0.5,
                    .period = Seconds{30},
                    .phase = static_cast<double>(hash % 6)};
    process.since = awake;
    process.footprint = static_cast<std::int64_t>(35 + hash % 70) * mebibyte;
    process.resident = process.footprint + process.footprint / 3;
    process.application = app.number;
    return process;
}

void settleTabs(World& world, Browser& browser, const RunningApp& app) {
    std::unordered_set<std::int32_t> wanted;
    for (TabWindow& window : browser.windows) {
        for (Tab& tab : window.tabs) {
            if (tab.renderer == 0) {
                tab.renderer = world.processes.spawn(renderer(app, tab, world.time.awake)).pid;
            }
            wanted.insert(tab.renderer);
        }
    }
    std::erase_if(world.processes.all(), [&](const Process& process) {
        return process.application == app.number && process.arguments == tabArguments &&
               !wanted.contains(process.pid);
    });
}

void settleWindows(World& world, const Browser& browser, const RunningApp& app) {
    std::erase_if(world.windows,
                  [&](const ScreenWindow& window) { return window.pid == app.mainPid; });
    world.windows.insert(world.windows.begin(), browser.windows.size(),
                         ScreenWindow{app.mainPid, app.bundle.name, 0});
}

} // namespace

void settle(World& world, const std::string& bundleIdentifier) {
    const auto browser = world.browsers.find(bundleIdentifier);
    const auto app =
        std::find_if(world.running.begin(), world.running.end(), [&](const RunningApp& each) {
            return each.bundle.bundleIdentifier == bundleIdentifier;
        });
    if (browser == world.browsers.end() || app == world.running.end()) {
        return;
    }
    settleTabs(world, browser->second, *app);
    settleWindows(world, browser->second, *app);
}

} // namespace pacelet::Simulated
