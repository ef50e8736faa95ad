#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pacelet::Simulated {

struct Tab {
    std::int64_t id = 0;
    std::string title;
    std::string url;
    std::int32_t renderer = 0; ///< pid of its helper; 0 before it has one
};

struct TabWindow {
    std::int64_t id = 0;
    bool incognito = false;
    std::string profile; ///< empty in a browser with one profile
    std::size_t activeTab = 0;
    std::vector<Tab> tabs;

    Tab* tab(std::int64_t tabID);
};

/// The windows and tabs of a Chromium browser, front to back.
struct Browser {
    std::string bundleIdentifier;
    std::string name;
    std::vector<TabWindow> windows;
    std::int64_t lastID = 1'000'000'000;
    bool hasProfiles = false;

    std::int64_t newID() { return lastID += 17; }
    TabWindow* window(std::int64_t windowID);

    /// The title of the window: page, browser and, where there are several, profile.
    std::string windowName(const TabWindow& window) const;

    TabWindow& openWindow();
    Tab& openTab(TabWindow& window, std::string url);
    void closeTab(std::int64_t windowID, std::int64_t tabID);
    void closeWindow(std::int64_t windowID);
};

struct World;

/// Gives every tab of the running browser its helper and every window its place on the screen, and
/// takes both from what was closed.
void settle(World& world, const std::string& bundleIdentifier);

} // namespace pacelet::Simulated
