#include "Hosts/Linux/Browser/BrowserProfiles.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Browser/BridgedBrowsers.h"

#include <fmt/format.h>
#include <set>
#include <simdjson.h>

namespace pacelet::Linux::BrowserProfiles {

namespace {

/// The extension keeps a single short value, so its settings stay small.
constexpr std::size_t mostSettingsBytes = 1 << 22;

bool holds(const std::string& folder, std::string_view token) {
    for (const std::string& name : sortedNames(folder)) {
        std::string bytes;
        const bool isData = name.ends_with(".log") || name.ends_with(".ldb");
        if (isData && !readFile(joinedPath(folder, name), mostSettingsBytes, bytes) &&
            bytes.find(token) != std::string::npos) {
            return true;
        }
    }
    return false;
}

} // namespace

std::string userDataFolder(std::string_view commandLine, std::string_view standard) {
    constexpr std::string_view option = "--user-data-dir=";
    for (const std::string_view argument : splitDroppingEmpty(commandLine, '\0')) {
        if (argument.starts_with(option) && argument.substr(option.size()).starts_with('/')) {
            return std::string{argument.substr(option.size())};
        }
    }
    return std::string{standard};
}

std::map<std::string, std::string> namesIn(std::string_view localState) {
    std::map<std::string, std::string> names;
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    simdjson::dom::object profiles;
    if (parser.parse(simdjson::padded_string{localState}).get(root) != simdjson::SUCCESS ||
        root["profile"]["info_cache"].get(profiles) != simdjson::SUCCESS) {
        return names;
    }
    for (const auto& [folder, facts] : profiles) {
        std::string_view name;
        if (facts["name"].get(name) != simdjson::SUCCESS) {
            name = {};
        }
        names.emplace(folder, trimmed(name));
    }
    return names;
}

std::optional<std::string> folderWith(const std::string& userData, std::string_view token) {
    const std::string settings = fmt::format("Local Extension Settings/{}", extensionID);
    for (std::string& folder : sortedNames(userData)) {
        if (holds(joinedPath(joinedPath(userData, folder), settings), token)) {
            return std::move(folder);
        }
    }
    return std::nullopt;
}

std::vector<std::optional<std::string>> shownNames(const std::vector<Profile>& profiles) {
    if (profiles.size() == 1 && profiles.front().isOnly) {
        return {std::nullopt};
    }
    std::vector<std::optional<std::string>> names;
    std::set<std::string> taken;
    for (const Profile& profile : profiles) {
        const std::string name = profile.name.empty() ? "Profile" : profile.name;
        std::string shown = name;
        for (int count = 2; !taken.insert(shown).second; ++count) {
            shown = fmt::format("{} ({})", name, count);
        }
        names.emplace_back(std::move(shown));
    }
    return names;
}

} // namespace pacelet::Linux::BrowserProfiles
