#pragma once

#include "Core/Browser/BrowserTab.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QString>

#include <string>
#include <vector>

namespace pacelet {

/// A row of the list of tabs: the head of a window, or one of the tabs that follow it.
struct TabRow {
    std::string id;
    std::string tabID; ///< `BrowserTab::id`; empty for the head of a window
    QString symbol;    ///< of the head of a window
    QString title;
    QString subtitle;
    bool isLast = false; ///< of its window
    bool isActive = false;
    bool isSelectable = false;
    bool isChecked = false;

    bool isHead() const { return tabID.empty(); }

    const std::string& key() const { return id; }
    /// The roles head, symbol, title, subtitle, last, active, selectable and ticked.
    static std::vector<ListRole<TabRow>> roles();

    bool operator==(const TabRow&) const = default;
};

/// All windows in one flat list, with nothing checked.
std::vector<TabRow> tabRows(const std::vector<BrowserWindow>& windows);

using TabListModel = KeyedListModel<TabRow>;

} // namespace pacelet
