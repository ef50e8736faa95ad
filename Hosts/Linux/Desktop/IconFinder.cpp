#include "Hosts/Linux/Desktop/IconFinder.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Desktop/IconTheme.h"
#include "Hosts/Linux/Desktop/KeyFile.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace pacelet::Linux {

namespace {

constexpr std::size_t mostIndexBytes = 1 << 20;
/// A chain of themes is three or four long.
constexpr std::size_t mostThemes = 16;
constexpr std::array<std::string_view, 2> endings{".png", ".svg"};
/// The one that every application may count on, and those that the large desktops use when nobody
/// has chosen another: entries name icons that stand in these alone.
constexpr std::array commonThemes{"hicolor", "Adwaita", "breeze"};

bool isFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

std::optional<std::string> iconIn(const std::string& folder, std::string_view name) {
    for (const std::string_view ending : endings) {
        if (std::string path = joinedPath(folder, name).append(ending); isFile(path)) {
            return path;
        }
    }
    return std::nullopt;
}

/// The theme that one of the desktops' settings names; empty when none does.
std::string themeInUse(const IconPlaces& places) {
    for (const std::string& file : places.settingsFiles) {
        std::string text;
        std::string theme;
        readFile(file, mostIndexBytes, text);
        forEachKey(text, [&](std::string_view group, std::string_view key, std::string_view value) {
            if ((group == "Icons" && key == "Theme") ||
                (group == "Settings" && key == "gtk-icon-theme-name")) {
                theme = trimmed(value, "\"");
            }
        });
        if (!theme.empty()) {
            return theme;
        }
    }
    return {};
}

/// A theme is one, though parts of it lie in several places; the first index counts.
IconTheme readTheme(const IconPlaces& places, const std::string& name) {
    std::string text;
    for (const std::string& folder : places.themeFolders) {
        if (!readFile(joinedPath(joinedPath(folder, name), "index.theme"), mostIndexBytes, text)) {
            return parseIconTheme(text);
        }
    }
    return {};
}

std::optional<std::string> iconInTheme(const IconPlaces& places, const std::string& themeName,
                                       IconTheme& theme, std::string_view name, int size) {
    std::stable_sort(theme.folders.begin(), theme.folders.end(),
                     [&](const IconFolder& left, const IconFolder& right) {
                         return left.distance(size) < right.distance(size);
                     });
    for (const IconFolder& folder : theme.folders) {
        for (const std::string& parent : places.themeFolders) {
            const std::string inTheme = joinedPath(joinedPath(parent, themeName), folder.path);
            if (auto icon = iconIn(inTheme, name)) {
                return icon;
            }
        }
    }
    return std::nullopt;
}

/// Some entries name a file where a theme's icon is meant.
std::string_view themeName(std::string_view name) {
    const bool hasEnding = std::any_of(endings.begin(), endings.end(),
                                       [&](std::string_view end) { return name.ends_with(end); });
    return hasEnding ? withoutExtension(name) : name;
}

std::optional<std::string> iconInThemes(const IconPlaces& places, std::string_view name, int size) {
    std::vector<std::string> chain;
    if (std::string theme = themeInUse(places); !theme.empty()) {
        chain.push_back(std::move(theme));
    }
    for (std::size_t at = 0; at < chain.size(); ++at) {
        IconTheme theme = readTheme(places, chain[at]);
        if (auto icon = iconInTheme(places, chain[at], theme, name, size)) {
            return icon;
        }
        for (std::string& parent : theme.inherits) {
            if (chain.size() < mostThemes &&
                std::find(chain.begin(), chain.end(), parent) == chain.end()) {
                chain.push_back(std::move(parent));
            }
        }
    }
    for (const char* const common : commonThemes) {
        if (std::find(chain.begin(), chain.end(), common) != chain.end()) {
            continue;
        }
        IconTheme theme = readTheme(places, common);
        if (auto icon = iconInTheme(places, common, theme, name, size)) {
            return icon;
        }
    }
    return std::nullopt;
}

} // namespace

IconPlaces IconPlaces::from(const DesktopPlaces& places, const std::string& configFolder) {
    IconPlaces icons;
    icons.themeFolders.push_back(places.home + "/.icons");
    for (const std::string& entries : places.entryFolders) {
        const std::string folder = std::filesystem::path{entries}.parent_path().string();
        icons.themeFolders.push_back(folder + "/icons");
        icons.looseFolders.push_back(folder + "/pixmaps");
    }
    icons.settingsFiles = {configFolder + "/kdeglobals", configFolder + "/gtk-4.0/settings.ini",
                           configFolder + "/gtk-3.0/settings.ini"};
    return icons;
}

std::optional<std::string> findIcon(const IconPlaces& places, std::string_view name, int size) {
    if (name.starts_with('/')) {
        std::string path{name};
        const bool isPicture = themeName(name) != name && isFile(path);
        return isPicture ? std::optional{std::move(path)} : std::nullopt;
    }
    if (name.empty() || name.find('/') != std::string_view::npos) {
        return std::nullopt;
    }
    name = themeName(name);
    if (auto icon = iconInThemes(places, name, size)) {
        return icon;
    }
    for (const std::string& folder : places.looseFolders) {
        if (auto icon = iconIn(folder, name)) {
            return icon;
        }
    }
    return std::nullopt;
}

} // namespace pacelet::Linux
