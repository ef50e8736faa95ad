#include "Core/Inspectors/WindowCensus.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>

namespace pacelet::WindowCensus {

namespace {

constexpr std::int64_t normalLayer = 0;
constexpr std::size_t mostDisplays = 16;

/// The value under `key` when it is of this type.
template<typename Value>
const Value* valueAt(const WindowDictionary& window, const char* key) {
    const auto found = window.find(key);
    return found == window.end() ? nullptr : std::get_if<Value>(&found->second);
}

/// A number in the range of a process identifier; a float must be whole.
std::optional<std::int32_t> ownerPID(const WindowDictionary& window) {
    constexpr const char* key = "kCGWindowOwnerPID";
    using Limits = std::numeric_limits<std::int32_t>;
    if (const auto* whole = valueAt<std::int64_t>(window, key)) {
        return *whole >= Limits::min() && *whole <= Limits::max()
                   ? std::optional{static_cast<std::int32_t>(*whole)}
                   : std::nullopt;
    }
    const auto* number = valueAt<double>(window, key);
    if (number && *number >= Limits::min() && *number <= Limits::max() &&
        std::trunc(*number) == *number) {
        return static_cast<std::int32_t>(*number);
    }
    return std::nullopt;
}

bool isNormalAndOnScreen(const WindowDictionary& window) {
    const auto* layer = valueAt<std::int64_t>(window, "kCGWindowLayer");
    const auto* onScreen = valueAt<bool>(window, "kCGWindowIsOnscreen");
    return layer && *layer == normalLayer && (!onScreen || *onScreen);
}

bool isScaled(WindowServer& server, std::uint32_t display) {
    const auto current = server.currentModeWidth(display);
    const auto modes = server.modeWidths(display);
    return current && modes && !modes->empty() &&
           *current != *std::max_element(modes->begin(), modes->end());
}

} // namespace

std::vector<WindowCount> count(const std::vector<WindowDictionary>& windowInfo) {
    std::vector<WindowCount> counts;
    std::unordered_map<std::int32_t, std::size_t> places;
    for (const WindowDictionary& window : windowInfo) {
        const auto pid = ownerPID(window);
        const auto* name = valueAt<std::string>(window, "kCGWindowOwnerName");
        if (!isNormalAndOnScreen(window) || !pid || !name) {
            continue;
        }
        const auto [place, isNew] = places.try_emplace(*pid, counts.size());
        if (isNew) {
            counts.push_back({*name, *pid, 0});
        }
        ++counts[place->second].count;
    }
    std::stable_sort(counts.begin(), counts.end(),
                     [](const WindowCount& left, const WindowCount& right) {
                         return left.count != right.count ? left.count > right.count
                                                          : left.ownerName < right.ownerName;
                     });
    return counts;
}

std::vector<WindowCount> live(WindowServer& server) {
    return count(server.windowInfo().value_or(std::vector<WindowDictionary>{}));
}

DisplayInfo displays(WindowServer& server) {
    const auto active = server.activeDisplays(mostDisplays);
    if (!active) {
        return {};
    }
    const auto scaled = std::count_if(active->begin(), active->end(), [&](std::uint32_t display) {
        return isScaled(server, display);
    });
    return {static_cast<std::int64_t>(active->size()), static_cast<std::int64_t>(scaled)};
}

} // namespace pacelet::WindowCensus
