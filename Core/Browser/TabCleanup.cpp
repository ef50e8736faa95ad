#include "Core/Browser/TabCleanup.h"

#include "Core/Browser/URLComponents.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

namespace pacelet::TabCleanup {

namespace {

/// Stands between profile and address in a key; neither holds it, as it separates the fields of
/// the listing that both come from.
constexpr char keySeparator = '\x1F';

using WindowGroup = std::vector<const BrowserWindow*>;

/// All windows without a profile are of one and the same.
std::string_view profileKey(const BrowserWindow& window) {
    return window.profile ? std::string_view{*window.profile} : std::string_view{};
}

/// Lowers the ASCII letters from `begin` on, `size` bytes far. The digits of a percent-encoded byte
/// keep their case.
void lower(std::string& text, std::size_t begin, std::size_t size) {
    constexpr std::size_t encodedLength = 3;
    for (std::size_t at = begin; at < begin + size;) {
        char& character = text[at];
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
        at += character == '%' ? encodedLength : 1;
    }
}

/// The windows that may be merged, by profile, in the order in which the profiles were met.
std::vector<WindowGroup> groupsByProfile(const std::vector<BrowserWindow>& windows) {
    std::vector<WindowGroup> groups;
    std::unordered_map<std::string_view, std::size_t> indexes;
    for (const BrowserWindow& window : windows) {
        if (window.isIncognito) {
            continue;
        }
        const auto [known, isNew] = indexes.try_emplace(profileKey(window), groups.size());
        if (isNew) {
            groups.emplace_back();
        }
        groups[known->second].push_back(&window);
    }
    return groups;
}

/// The bytes of an extension process of the application below `bundlePrefix`; nothing for any other
/// line.
std::optional<std::int64_t> extensionBytes(std::string_view line, std::string_view bundlePrefix) {
    std::array<std::string_view, 3> columns;
    if (!splitColumns(line, columns)) {
        return std::nullopt;
    }
    const std::string_view command = columns[2];
    const auto kilobytes = parseInteger<std::int64_t>(columns[1]);
    std::int64_t bytes = 0;
    if (!kilobytes || __builtin_mul_overflow(*kilobytes, 1024, &bytes) ||
        !command.starts_with(bundlePrefix) ||
        command.find("--extension-process") == std::string_view::npos) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace

std::optional<std::string> profile(std::string_view windowName, std::string_view appName) {
    const std::string marker = " - " + std::string{appName} + " - ";
    const std::size_t at = windowName.rfind(marker);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view name = trimmed(windowName.substr(at + marker.size()), " \t");
    return name.empty() ? std::nullopt : std::optional{std::string{name}};
}

std::string normalize(std::string_view url) {
    const auto components = parseURL(url);
    if (!components) {
        return std::string{url};
    }
    std::string normal{url.substr(0, url.find('#'))};
    for (const std::string_view part : {components->scheme, components->host}) {
        if (!part.empty()) {
            lower(normal, static_cast<std::size_t>(part.data() - url.data()), part.size());
        }
    }
    if (normal.ends_with('/')) {
        normal.pop_back();
    }
    return normal;
}

std::vector<BrowserTab> duplicates(const std::vector<BrowserWindow>& windows) {
    std::unordered_set<std::string> seen;
    std::vector<BrowserTab> found;
    for (const BrowserWindow& window : windows) {
        if (window.isIncognito) {
            continue;
        }
        const std::string prefix = std::string{profileKey(window)} + keySeparator;
        for (const BrowserTab& tab : window.tabs) {
            if (!seen.insert(prefix + normalize(tab.url)).second) {
                found.push_back(tab);
            }
        }
    }
    return found;
}

std::optional<MergePlan> mergePlan(const std::vector<BrowserWindow>& windows) {
    const std::vector<WindowGroup> groups = groupsByProfile(windows);
    const auto largest =
        std::ranges::max_element(groups, {}, [](const WindowGroup& group) { return group.size(); });
    if (largest == groups.end() || largest->size() < 2) {
        return std::nullopt;
    }
    const BrowserWindow& target = **std::ranges::max_element(
        *largest, {}, [](const BrowserWindow* window) { return window->tabs.size(); });
    MergePlan plan;
    plan.targetWindowID = target.id;
    plan.profile = target.profile;
    for (const BrowserWindow* window : *largest) {
        if (window->id == target.id) {
            continue;
        }
        plan.windowsToClose.push_back(window->id);
        for (const BrowserTab& tab : window->tabs) {
            plan.urls.push_back(tab.url);
        }
    }
    return plan;
}

ExtensionUsage extensions(std::string_view listing, std::string_view appPath) {
    ExtensionUsage usage;
    const std::string bundlePrefix = std::string{appPath} + '/';
    forEachLine(listing, [&](std::string_view line) {
        const auto bytes = extensionBytes(line, bundlePrefix);
        std::int64_t sum = 0;
        if (bytes && !__builtin_add_overflow(usage.memoryBytes, *bytes, &sum)) {
            usage.memoryBytes = sum;
            ++usage.count;
        }
    });
    return usage;
}

} // namespace pacelet::TabCleanup
