#include "Hosts/Simulated/Model/Browser.h"

#include <algorithm>
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

} // namespace pacelet::Simulated
