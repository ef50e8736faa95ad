#include "Hosts/Linux/Apps/AppScope.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <optional>

namespace pacelet::Linux {

namespace {

constexpr std::string_view scopeSuffix = ".scope";
constexpr std::string_view serviceSuffix = ".service";

std::optional<char> hexByte(std::string_view digits) {
    unsigned value = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.size() != 2 || error != std::errc{} || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return static_cast<char>(static_cast<unsigned char>(value));
}

/// The unit that a process runs in: the innermost scope or service on the way.
std::string_view innermostUnit(std::string_view path) {
    while (!path.empty()) {
        const std::size_t slash = path.rfind('/');
        const std::string_view last = path.substr(slash + 1);
        if (last.ends_with(scopeSuffix) || last.ends_with(serviceSuffix)) {
            return last;
        }
        path = path.substr(0, slash == std::string_view::npos ? 0 : slash);
    }
    return {};
}

std::string_view unitOf(std::string_view cgroup) {
    std::string_view unit;
    forEachLine(cgroup, [&](std::string_view line) {
        const std::size_t first = line.find(':');
        const std::size_t second = line.find(':', first + 1);
        if (first == std::string_view::npos || second == std::string_view::npos) {
            return;
        }
        const std::string_view controllers = line.substr(first + 1, second - first - 1);
        if (controllers.empty() || controllers == "name=systemd") {
            const std::string_view found = innermostUnit(line.substr(second + 1));
            unit = found.empty() ? unit : found;
        }
    });
    return unit;
}

/// "firefox_firefox" of "snap.firefox.firefox-<uuid>" and of "snap.firefox.firefox.<uuid>".
std::string snapID(std::string_view unit) {
    constexpr std::size_t uuidLength = 36;
    const auto pieces = splitKeepingEmpty(unit, '.');
    if (pieces.size() < 3) {
        return {};
    }
    std::string_view app = pieces[2];
    if (app.size() > uuidLength + 1 && app[app.size() - uuidLength - 1] == '-') {
        app.remove_suffix(uuidLength + 1);
    }
    return std::string{pieces[1]} + '_' + std::string{app};
}

/// Every tail of `id` that begins behind a hyphen, the longest first.
void addReadings(std::string_view id, std::vector<std::string>& ids) {
    while (!id.empty()) {
        ids.push_back(unescapedUnit(id));
        const std::size_t hyphen = id.find('-');
        id = hyphen == std::string_view::npos ? std::string_view{} : id.substr(hyphen + 1);
    }
}

} // namespace

std::string unescapedUnit(std::string_view escaped) {
    std::string name;
    while (!escaped.empty()) {
        const auto byte = escaped.starts_with("\\x") ? hexByte(escaped.substr(2, 2)) : std::nullopt;
        name += byte.value_or(escaped.front());
        escaped.remove_prefix(byte ? 4 : 1);
    }
    return name;
}

std::vector<std::string> appScopeIDs(std::string_view cgroup) {
    constexpr std::string_view appPrefix = "app-";
    constexpr std::string_view snapPrefix = "snap.";
    constexpr std::string_view busPrefix = "dbus-";
    std::string_view unit = unitOf(cgroup);
    const bool isScope = unit.ends_with(scopeSuffix);
    unit = unit.substr(0, unit.rfind('.'));
    std::vector<std::string> ids;
    if (unit.starts_with(snapPrefix)) {
        ids.push_back(snapID(unit));
        std::erase(ids, "");
        return ids;
    }
    const bool isFromBus = unit.starts_with(busPrefix);
    if (!isFromBus && !unit.starts_with(appPrefix)) {
        return ids;
    }
    unit.remove_prefix(isFromBus ? busPrefix.size() : appPrefix.size());
    const std::string_view id = unit.substr(0, unit.find('@'));
    if (const std::size_t random = id.rfind('-'); isScope && random != std::string_view::npos) {
        addReadings(id.substr(0, random), ids);
    }
    addReadings(id, ids);
    return ids;
}

std::string_view serviceUnit(std::string_view cgroup) {
    std::string_view unit = unitOf(cgroup);
    if (!unit.ends_with(serviceSuffix)) {
        return {};
    }
    unit.remove_suffix(serviceSuffix.size());
    return unit;
}

} // namespace pacelet::Linux
