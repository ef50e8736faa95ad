#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pacelet {

/// One open tab, as the browser told it.
struct BrowserTab {
    std::string id;       ///< `windowID`, a slash and `tabID`; unique within one listing
    std::string windowID; ///< of the window that holds the tab
    std::string tabID;
    std::string title;
    std::string url;
    bool isActive = false; ///< frontmost in its window

    /// The host in `url` as it stands there, or the whole `url` when that names none.
    std::string host() const;

    bool operator==(const BrowserTab&) const = default;
};

/// One browser window with its tabs in their order.
struct BrowserWindow {
    std::string id;
    bool isIncognito = false;           ///< any window that is not in normal mode
    std::optional<std::string> profile; ///< never empty; nothing when the window's name tells none
    std::vector<BrowserTab> tabs;

    bool operator==(const BrowserWindow&) const = default;
};

} // namespace pacelet
