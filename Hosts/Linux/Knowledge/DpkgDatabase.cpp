#include "Hosts/Linux/Knowledge/DpkgDatabase.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace pacelet::Linux {

namespace {

constexpr std::size_t largestDatabaseFile = std::size_t{64} << 20;
constexpr std::string_view listEnding = ".list";

/// Where old packages say that a file lies which lies below "/usr" today, or nothing (empty).
std::string_view oldPlace(std::string_view path) {
    constexpr std::string_view usr = "/usr";
    constexpr std::array<std::string_view, 3> moved{"/usr/bin/", "/usr/sbin/", "/usr/lib"};
    for (const std::string_view folder : moved) {
        if (path.starts_with(folder)) {
            return path.substr(usr.size());
        }
    }
    return {};
}

} // namespace

void forEachListed(std::string_view list, const std::unordered_set<std::string_view>& wanted,
                   const std::function<void(std::string_view)>& visit) {
    forEachLine(list, [&](std::string_view line) {
        if (wanted.contains(line)) {
            visit(line);
        }
    });
}

void forEachPackage(std::string_view status, const std::function<void(Package)>& visit) {
    constexpr std::string_view nameKey = "Package:";
    constexpr std::string_view priorityKey = "Priority:";
    constexpr std::string_view descriptionKey = "Description:";
    constexpr std::array<std::string_view, 3> basePriorities{"required", "important", "standard"};
    Package package;
    // No blank line is needed to tell the packages apart: each begins with its name.
    forEachLine(status, [&](std::string_view line) {
        if (line.starts_with(nameKey)) {
            package = {std::string{trimmed(line.substr(nameKey.size()))}, {}};
        } else if (line.starts_with(priorityKey)) {
            package.isBase =
                std::ranges::find(basePriorities, trimmed(line.substr(priorityKey.size()))) !=
                basePriorities.end();
        } else if (line.starts_with(descriptionKey) && !package.name.empty()) {
            package.description = trimmed(line.substr(descriptionKey.size()));
            visit(std::exchange(package, {}));
        }
    });
}

std::unordered_map<std::string, std::string>
DpkgDatabase::namesOfOwners(std::span<const std::string> paths) const {
    std::unordered_map<std::string_view, std::string_view> asked; // as listed, as asked
    std::unordered_set<std::string_view> wanted;
    for (const std::string& path : paths) {
        for (const std::string_view place : {std::string_view{path}, oldPlace(path)}) {
            if (!place.empty() && wanted.insert(place).second) {
                asked.emplace(place, path);
            }
        }
    }
    std::unordered_map<std::string, std::string> names;
    const std::string lists = folder_ + "/info";
    std::string text;
    for (const std::string& file : sortedNames(lists)) {
        if (!file.ends_with(listEnding) ||
            readFile(joinedPath(lists, file), largestDatabaseFile, text)) {
            continue;
        }
        forEachListed(text, wanted, [&](std::string_view path) {
            // A package of one architecture has that behind a colon.
            names.try_emplace(std::string{asked.at(path)}, file, 0,
                              std::min(file.find(':'), file.size() - listEnding.size()));
        });
    }
    return names;
}

std::unordered_map<std::string, Package>
DpkgDatabase::owners(std::span<const std::string> paths) const {
    std::unordered_map<std::string, Package> owners;
    if (paths.empty()) {
        return owners;
    }
    std::unordered_map<std::string, Package> packages;
    for (const auto& [path, name] : namesOfOwners(paths)) {
        const Package unread{name, {}};
        owners.emplace(path, unread);
        packages.emplace(name, unread);
    }
    std::string status;
    if (owners.empty() || readFile(statusFile(), largestDatabaseFile, status)) {
        return owners;
    }
    forEachPackage(status, [&](Package package) {
        if (const auto found = packages.find(package.name); found != packages.end()) {
            found->second = std::move(package);
        }
    });
    for (auto& [path, package] : owners) {
        package = packages.at(package.name);
    }
    return owners;
}

} // namespace pacelet::Linux
