#include "PaceletApp/RootView/SidebarModel.h"

#include "PaceletApp/Support/QtText.h"

#include <utility>
#include <vector>

namespace pacelet {

namespace {

std::optional<std::size_t> unlessZero(std::size_t count) {
    return count != 0 ? std::optional{count} : std::nullopt;
}

} // namespace

std::vector<ListRole<SidebarEntry>> SidebarEntry::roles() {
    using Entry = SidebarEntry;
    return {
        {"title", [](const Entry& entry) { return entry.title; }},
        {"symbol", [](const Entry& entry) { return entry.symbol; }},
        {"count", [](const Entry& entry) { return entry.count; }},
    };
}

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
    : QObject{parent},
      monitor_{monitor},
      router_{router} {
    connect(&monitor, &Monitor::changed, this, [this](const Fields& fields) {
        if (fields.hold(monitor_.groups, monitor_.backgroundItems)) {
            refresh();
        }
    });
    connect(&router, &Router::screenChanged, this, &SidebarModel::currentChanged);
    refresh();
}

void SidebarModel::refresh() {
    std::vector<SidebarEntry> entries;
    for (const ScreenRow& screen : screens) {
        const auto count = sidebarCount(screen.value, monitor_);
        entries.push_back({.screen = std::string{screen.rawValue},
                           .title = qtText(screen.title),
                           .symbol = qtText(screen.symbol),
                           .count = count ? QString::number(*count) : QString{}});
    }
    rows_.update(std::move(entries));
}

void SidebarModel::choose(int row) {
    if (row >= 0 && static_cast<std::size_t>(row) < screens.size()) {
        router_.setScreen(screens[static_cast<std::size_t>(row)].value);
    }
}

} // namespace pacelet
