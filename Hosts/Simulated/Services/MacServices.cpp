#include "Hosts/Simulated/Services/MacServices.h"

#include <algorithm>
#include <utility>

namespace pacelet::Simulated {

namespace {

constexpr std::size_t keptMessages = 1000;

/// What the window server tells of a window, but for its picture.
WindowDictionary dictionary(const ScreenWindow& window, std::int64_t number) {
    return {
        {"kCGWindowNumber", number},
        {"kCGWindowLayer", window.layer},
        {"kCGWindowOwnerPID", std::int64_t{window.pid}},
        {"kCGWindowOwnerName", window.owner},
        {"kCGWindowIsOnscreen", true},
        {"kCGWindowAlpha", 1.0},
        {"kCGWindowStoreType", std::int64_t{1}},
        {"kCGWindowSharingState", std::int64_t{1}},
    };
}

const Display* findDisplay(const World& world, std::uint32_t id) {
    const auto found = std::find_if(world.displays.begin(), world.displays.end(),
                                    [id](const Display& each) { return each.id == id; });
    return found != world.displays.end() ? &*found : nullptr;
}

} // namespace

std::optional<std::vector<WindowDictionary>> MacWindowServer::windowInfo() {
    const auto world = machine_.lock();
    if (world->failures.has<WindowsUnknown>()) {
        return std::nullopt;
    }
    std::vector<WindowDictionary> windows;
    windows.reserve(world->windows.size());
    std::int64_t number = 40;
    for (const ScreenWindow& window : world->windows) {
        windows.push_back(dictionary(window, number++));
    }
    return windows;
}

std::optional<std::vector<std::uint32_t>> MacWindowServer::activeDisplays(std::size_t maximum) {
    const auto world = machine_.lock();
    if (world->failures.has<DisplaysUnknown>()) {
        return std::nullopt;
    }
    std::vector<std::uint32_t> ids;
    for (const Display& display : world->displays) {
        if (ids.size() < maximum) {
            ids.push_back(display.id);
        }
    }
    return ids;
}

std::optional<std::int64_t> MacWindowServer::currentModeWidth(std::uint32_t display) {
    const auto world = machine_.lock();
    const Display* const found = findDisplay(*world, display);
    return found != nullptr ? std::optional{found->currentWidth} : std::nullopt;
}

std::optional<std::vector<std::int64_t>> MacWindowServer::modeWidths(std::uint32_t display) {
    const auto world = machine_.lock();
    const Display* const found = findDisplay(*world, display);
    return found != nullptr ? std::optional{found->modeWidths} : std::nullopt;
}

bool MacLoginItems::set(LoginItemStatus status) {
    const auto world = machine_.lock();
    if (world->failures.has<LoginItemsRefuse>()) {
        return false;
    }
    world->loginItem = status;
    return true;
}

namespace {

template<typename Value>
std::optional<Value> preference(const World& world, std::string_view key) {
    const auto found = world.preferences.find(key);
    if (found == world.preferences.end()) {
        return std::nullopt;
    }
    const Value* const value = std::get_if<Value>(&found->second);
    return value != nullptr ? std::optional{*value} : std::nullopt;
}

} // namespace

std::optional<bool> MacPreferences::boolean(std::string_view key) {
    return preference<bool>(*machine_.lock(), key);
}

void MacPreferences::setBoolean(std::string_view key, bool value) {
    machine_.lock()->preferences.insert_or_assign(std::string{key}, value);
}

std::optional<std::string> MacPreferences::data(std::string_view key) {
    return preference<std::string>(*machine_.lock(), key);
}

void MacPreferences::setData(std::string_view key, std::string_view bytes) {
    machine_.lock()->preferences.insert_or_assign(std::string{key}, std::string{bytes});
}

void MacLog::write(LogLevel level, std::string_view subsystem, std::string_view category,
                   std::string_view message) {
    const auto world = machine_.lock();
    auto& log = world->records.log;
    if (log.size() == keptMessages) {
        log.erase(log.begin());
    }
    log.push_back({level, std::string{subsystem}, std::string{category}, std::string{message}});
}

} // namespace pacelet::Simulated
