#include "PaceletApp/RootView/SidebarModel.h"

#include "PaceletApp/Support/QtText.h"

namespace pacelet {

namespace {

std::vector<ListRole<SidebarRow>> roles() {
    return {
        {"screen", [](const SidebarRow& row) { return QVariant{qtText(row.screen)}; }},
        {"title", [](const SidebarRow& row) { return QVariant{row.title}; }},
        {"symbol", [](const SidebarRow& row) { return QVariant{row.symbol}; }},
        {"count", [](const SidebarRow& row) { return QVariant{row.count}; }},
        {"current", [](const SidebarRow& row) { return QVariant{row.current}; }},
    };
}

std::optional<std::size_t> unlessZero(std::size_t count) {
    return count != 0 ? std::optional{count} : std::nullopt;
}

} // namespace

std::optional<std::size_t> sidebarCount(Screen screen, const Monitor& monitor) {
    switch (screen) {
    case Screen::processes:
        return unlessZero(monitor.groups().size());
    case Screen::backgroundItems:
        return unlessZero(monitor.backgroundItems().size());
    case Screen::overview:
    case Screen::internet:
    case Screen::usage:
        break;
    }
    return std::nullopt;
}

SidebarModel::SidebarModel(Monitor& monitor, Router& router, QObject* parent)
    : QObject{parent}, monitor_{monitor}, router_{router}, rows_{[](const SidebarRow& row) {
                                                                     return row.screen;
                                                                 },
                                                                 roles()} {
    connect(&monitor, &Monitor::groupsChanged, this, &SidebarModel::refresh);
    connect(&monitor, &Monitor::backgroundItemsChanged, this, &SidebarModel::refresh);
    connect(&router, &Router::screenChanged, this, &SidebarModel::refresh);
    refresh();
}

void SidebarModel::refresh() {
    std::vector<SidebarRow> rows;
    for (const ScreenRow& screen : screens) {
        const auto count = sidebarCount(screen.value, monitor_);
        rows.push_back({.screen = std::string{screen.rawValue},
                        .title = qtText(screen.title),
                        .symbol = qtText(screen.symbol),
                        .count = count ? QString::number(*count) : QString{},
                        .current = screen.value == router_.screen()});
    }
    rows_.update(std::move(rows));
}

void SidebarModel::choose(const QString& screen) {
    if (const auto chosen = screenFromRawValue(screen.toStdString())) {
        router_.setScreen(*chosen);
    }
}

} // namespace pacelet
