#include "PaceletApp/BrowserPanel/TabRow.h"

#include "PaceletApp/BrowserPanel/BrowserTexts.h"
#include "PaceletApp/Support/QtText.h"

namespace pacelet {

namespace {

TabRow headRow(const BrowserWindow& window) {
    TabRow row;
    row.id = "W" + window.id;
    row.symbol = window.isIncognito ? QStringLiteral("eyeglasses") : QStringLiteral("macwindow");
    row.title = qtText(BrowserTexts::windowName(window));
    row.subtitle = qtText(BrowserTexts::windowTabs(window.tabs.size()));
    return row;
}

TabRow tabRow(const BrowserTab& tab, bool isIncognito) {
    TabRow row;
    row.id = "T" + tab.id;
    row.tabID = tab.id;
    row.title = qtText(tab.title.empty() ? tab.url : tab.title);
    row.subtitle = qtText(tab.host());
    row.isActive = tab.isActive;
    row.isSelectable = !isIncognito;
    return row;
}

} // namespace

std::vector<TabRow> tabRows(const std::vector<BrowserWindow>& windows) {
    std::vector<TabRow> rows;
    for (const BrowserWindow& window : windows) {
        rows.push_back(headRow(window));
        for (const BrowserTab& tab : window.tabs) {
            rows.push_back(tabRow(tab, window.isIncognito));
        }
        rows.back().isLast = true;
    }
    return rows;
}

std::vector<ListRole<TabRow>> TabRow::roles() {
    using Row = TabRow;
    return {
        {"head", [](const Row& row) { return row.isHead(); }},
        {"symbol", [](const Row& row) { return row.symbol; }},
        {"title", [](const Row& row) { return row.title; }},
        {"subtitle", [](const Row& row) { return row.subtitle; }},
        {"last", [](const Row& row) { return row.isLast; }},
        {"active", [](const Row& row) { return row.isActive; }},
        {"selectable", [](const Row& row) { return row.isSelectable; }},
        {"ticked", [](const Row& row) { return row.isChecked; }},
    };
}

} // namespace pacelet
