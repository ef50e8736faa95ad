#include "Hosts/Linux/Browser/BridgedApplication.h"

#include "Hosts/Script/ScriptError.h"

#include <algorithm>
#include <fmt/format.h>

namespace pacelet::Linux {

namespace {

using Script::ScriptError;

/// Ids of a browser have 31 bits.
constexpr int numberShift = 32;
constexpr std::int64_t idMask = (std::int64_t{1} << numberShift) - 1;

std::int32_t errorNumber(LinkError::Kind kind) {
    switch (kind) {
    case LinkError::Kind::lost:
        return Script::connectionInvalid;
    case LinkError::Kind::late:
        return Script::timedOut;
    case LinkError::Kind::tooLong:
    case LinkError::Kind::refused:
        break;
    }
    return Script::noSuchObject;
}

std::size_t activeTab(const BridgeMessages::Window& window) {
    const auto active = std::find_if(window.tabs.begin(), window.tabs.end(),
                                     [](const auto& tab) { return tab.isActive; });
    return active == window.tabs.end() ? 0 : static_cast<std::size_t>(active - window.tabs.begin());
}

} // namespace

BridgeMessages::Reply BridgedApplication::ask(BrowserLink& link,
                                              const BridgeMessages::Request& request) const {
    try {
        return link.ask(request);
    } catch (const LinkError& error) {
        if (error.kind() == LinkError::Kind::lost && !isRunning_()) {
            throw ScriptError{Script::notRunning,
                              name_ + " got an error: Application isn’t running."};
        }
        throw ScriptError{errorNumber(error.kind()),
                          fmt::format("{} got an error: {}", name_, error.what())};
    }
}

std::vector<BridgedApplication::SeenWindow>& BridgedApplication::windows() {
    if (windows_) {
        return *windows_;
    }
    std::vector<SeenWindow> seen;
    for (std::size_t index = 0; index < profiles_.size(); ++index) {
        BrowserLink& link = *profiles_[index].link;
        for (BridgeMessages::Window& window : ask(link, {.ask = "list"}).windows) {
            const std::int64_t id = (link.number() << numberShift) | window.id;
            seen.push_back({id, index, std::move(window)});
        }
    }
    return windows_.emplace(std::move(seen));
}

Script::Window BridgedApplication::window(std::size_t index) {
    const SeenWindow& seen = windows().at(index);
    return {seen.id, "normal", static_cast<std::int64_t>(activeTab(seen.content)) + 1,
            seen.content.tabs.size()};
}

std::string BridgedApplication::windowName(std::size_t index) {
    const SeenWindow& seen = windows().at(index);
    const auto& profile = profiles_[seen.profile].name;
    if (!profile) {
        // A page's title might read as if it told a profile.
        return name_;
    }
    const std::string title =
        seen.content.tabs.empty() ? name_ : seen.content.tabs[activeTab(seen.content)].title;
    return fmt::format("{} - {} - {}", title, name_, *profile);
}

Script::Tab BridgedApplication::tab(std::size_t window, std::size_t index) {
    const BridgeMessages::Tab& tab = windows().at(window).content.tabs.at(index);
    return {tab.id, tab.title, tab.url};
}

std::size_t BridgedApplication::frontWindow() {
    const auto& all = windows();
    const auto focused = std::find_if(all.begin(), all.end(),
                                      [](const auto& seen) { return seen.content.isFocused; });
    return focused == all.end() ? 0 : static_cast<std::size_t>(focused - all.begin());
}

BridgedApplication::Place BridgedApplication::placeOf(std::int64_t window) const {
    const auto profile =
        std::find_if(profiles_.begin(), profiles_.end(), [&](const LinkedProfile& each) {
            return each.link->number() == window >> numberShift;
        });
    if (profile == profiles_.end()) {
        throw ScriptError{Script::noSuchObject, fmt::format("{} got an error: Can’t get window id "
                                                            "{}.",
                                                            name_, window)};
    }
    return {*profile->link, window & idMask};
}

void BridgedApplication::closeTab(std::int64_t window, std::int64_t tab) {
    const Place place = placeOf(window);
    ask(place.link, {.ask = "closeTab", .window = place.window, .tab = tab});
    auto& all = windows();
    const auto seen =
        std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.id == window; });
    if (seen != all.end()) {
        std::erase_if(seen->content.tabs, [&](const auto& each) { return each.id == tab; });
        // A window goes with its last tab.
        if (seen->content.tabs.empty()) {
            all.erase(seen);
        }
    }
}

void BridgedApplication::closeWindow(std::int64_t window) {
    const Place place = placeOf(window);
    ask(place.link, {.ask = "closeWindow", .window = place.window});
    std::erase_if(windows(), [&](const auto& each) { return each.id == window; });
}

std::int64_t BridgedApplication::openTab(std::int64_t window, const std::string& url) {
    const Place place = placeOf(window);
    const auto made = ask(place.link, {.ask = "openTab", .window = place.window, .url = url}).made;
    openedWindow_ = window;
    openedTab_ = made;
    for (SeenWindow& seen : windows()) {
        if (seen.id == window && made) {
            seen.content.tabs.push_back({*made, false, url, url});
        }
    }
    return made.value_or(0);
}

std::int64_t BridgedApplication::openWindow() {
    BrowserLink& link = *profiles_.front().link;
    const auto made = ask(link, {.ask = "openWindow"}).made;
    // With whatever tab the browser has given it.
    windows_.reset();
    return (link.number() << numberShift) | made.value_or(0);
}

void BridgedApplication::activate() {
    const auto& all = windows();
    if (all.empty()) {
        return;
    }
    const std::int64_t window = openedTab_ ? openedWindow_ : all[frontWindow()].id;
    const Place place = placeOf(window);
    ask(place.link, {.ask = "show", .window = place.window, .tab = openedTab_});
}

} // namespace pacelet::Linux
