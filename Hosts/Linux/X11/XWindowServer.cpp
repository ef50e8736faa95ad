#include "Hosts/Linux/X11/XWindowServer.h"

#include "Hosts/Linux/X11/Displays.h"
#include "Hosts/Linux/X11/WindowList.h"

#include <algorithm>
#include <utility>

namespace pacelet::Linux::X11 {

namespace {

const Display* find(const std::optional<std::vector<Display>>& displays, std::uint32_t id) {
    if (!displays) {
        return nullptr;
    }
    const auto found = std::find_if(displays->begin(), displays->end(),
                                    [&](const Display& display) { return display.id == id; });
    return found == displays->end() ? nullptr : &*found;
}

std::optional<std::vector<Display>> displaysOf(const std::string& name) {
    const Connection connection{name};
    return connection ? readDisplays(connection) : std::nullopt;
}

} // namespace

XWindowServer::XWindowServer(std::string display, NamesByPID applicationNames)
    : display_{std::move(display)},
      applicationNames_{std::move(applicationNames)} {}

std::optional<std::vector<WindowDictionary>> XWindowServer::windowInfo() {
    const Connection connection{display_};
    if (!connection) {
        return std::nullopt;
    }
    const auto names = applicationNames_();
    std::vector<WindowDictionary> dictionaries;
    for (const Window& window : readWindows(connection)) {
        WindowDictionary& dictionary = dictionaries.emplace_back();
        dictionary["kCGWindowLayer"] = window.layer;
        dictionary["kCGWindowIsOnscreen"] = window.isOnScreen;
        if (!window.pid) {
            continue;
        }
        dictionary["kCGWindowOwnerPID"] = std::int64_t{*window.pid};
        const auto name = names.find(*window.pid);
        if (name != names.end() || !window.className.empty()) {
            dictionary["kCGWindowOwnerName"] =
                name != names.end() ? name->second : window.className;
        }
    }
    return dictionaries;
}

std::optional<std::vector<std::uint32_t>> XWindowServer::activeDisplays(std::size_t maximum) {
    const auto displays = displaysOf(display_);
    if (!displays) {
        return std::nullopt;
    }
    std::vector<std::uint32_t> ids;
    for (const Display& display : *displays) {
        if (ids.size() < maximum) {
            ids.push_back(display.id);
        }
    }
    return ids;
}

std::optional<std::int64_t> XWindowServer::currentModeWidth(std::uint32_t id) {
    const auto displays = displaysOf(display_);
    const Display* display = find(displays, id);
    return display != nullptr ? std::optional{display->currentWidth} : std::nullopt;
}

std::optional<std::vector<std::int64_t>> XWindowServer::modeWidths(std::uint32_t id) {
    const auto displays = displaysOf(display_);
    const Display* display = find(displays, id);
    return display != nullptr ? std::optional{display->widths} : std::nullopt;
}

} // namespace pacelet::Linux::X11
