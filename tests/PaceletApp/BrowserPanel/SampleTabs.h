#pragma once

#include "Core/Browser/BrowserTab.h"

#include <optional>
#include <string>
#include <vector>

namespace pacelet {

/// A window of tabs with these titles; the first is active.
inline BrowserWindow window(const std::string& id, const std::vector<std::string>& titles,
                            std::optional<std::string> profile = {}) {
    BrowserWindow made;
    made.id = id;
    made.profile = std::move(profile);
    for (const std::string& title : titles) {
        const std::string number = std::to_string(made.tabs.size());
        made.tabs.push_back({id + "/" + number, id, number, title, "https://example.com/" + number,
                             made.tabs.empty()});
    }
    return made;
}

inline BrowserWindow incognito(const std::string& id, const std::vector<std::string>& titles) {
    BrowserWindow made = window(id, titles);
    made.isIncognito = true;
    return made;
}

} // namespace pacelet
