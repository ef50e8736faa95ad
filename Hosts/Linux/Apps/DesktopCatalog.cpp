#include "Hosts/Linux/Apps/DesktopCatalog.h"

#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/EntryReader.h"
#include "Hosts/Linux/Apps/TimeOfChange.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <unistd.h>
#include <unordered_set>

namespace pacelet::Linux {

namespace {

namespace fs = std::filesystem;

std::string variable(const char* name, std::string_view standard) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? std::string{value} : std::string{standard};
}

std::vector<std::string> listVariable(const char* name, std::string_view standard) {
    const std::string value = variable(name, standard);
    const auto pieces = splitDroppingEmpty(value, ':');
    return {pieces.begin(), pieces.end()};
}

/// The user's home folder: HOME, or what the system has for the user.
std::string homeFolder() {
    std::string home = variable("HOME", "");
    std::array<char, 16384> room;
    passwd record{};
    passwd* found = nullptr;
    if (!home.starts_with('/') &&
        ::getpwuid_r(::getuid(), &record, room.data(), room.size(), &found) == 0 && found) {
        home = found->pw_dir;
    }
    // Who has no home gets no files: nothing can stand below this one.
    return home.starts_with('/') ? home : "/dev/null";
}

/// Calls `visit(entry)` for everything below `folder`; what cannot be read is passed over.
template<typename Visitor>
void forEachBelow(const std::string& folder, Visitor&& visit) {
    std::error_code error;
    fs::recursive_directory_iterator walk{folder, fs::directory_options::skip_permission_denied,
                                          error};
    const fs::recursive_directory_iterator end;
    for (; !error && walk != end; walk.increment(error)) {
        visit(*walk);
    }
}

/// An entry's id: its place below the folder with hyphens for slashes, less ".desktop".
std::string entryID(const fs::path& file, const std::string& folder) {
    std::string id = file.lexically_relative(folder).replace_extension().string();
    std::replace(id.begin(), id.end(), '/', '-');
    return id;
}

/// The entry files of one folder in a settled order, which a folder itself does not have.
std::vector<fs::path> entryFiles(const std::string& folder) {
    std::vector<fs::path> files;
    forEachBelow(folder, [&](const fs::directory_entry& entry) {
        if (entry.path().extension() == ".desktop") {
            files.push_back(entry.path());
        }
    });
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

DesktopPlaces DesktopPlaces::fromEnvironment() {
    DesktopPlaces places;
    places.home = homeFolder();
    std::vector<std::string> data = listVariable("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    data.insert(data.begin(), variable("XDG_DATA_HOME", places.home + "/.local/share"));
    for (const std::string& folder : data) {
        places.entryFolders.push_back(folder + "/applications");
    }
    places.searchPath = listVariable("PATH", "/usr/local/bin:/usr/bin:/bin");
    places.desktops = listVariable("XDG_CURRENT_DESKTOP", "");
    return places;
}

std::vector<DesktopApp> readDesktopApps(const DesktopPlaces& places) {
    std::vector<DesktopApp> apps;
    // An entry hides all of the same id in later folders, even when no menu shows it.
    std::unordered_set<std::string> seen;
    const EntryReader reader{places};
    for (const std::string& folder : places.entryFolders) {
        for (const fs::path& file : entryFiles(folder)) {
            std::string id = entryID(file, folder);
            if (!seen.insert(id).second) {
                continue;
            }
            if (auto app = reader.read(file.string(), std::move(id))) {
                apps.push_back(*std::move(app));
            }
        }
    }
    return apps;
}

std::optional<std::string> findEntryFile(const DesktopPlaces& places, const std::string& id) {
    for (const std::string& folder : places.entryFolders) {
        std::string file = folder + '/' + id + ".desktop";
        std::error_code error;
        if (fs::is_regular_file(file, error)) {
            return file;
        }
        for (const fs::path& other : entryFiles(folder)) {
            if (entryID(other, folder) == id) {
                return other.string();
            }
        }
    }
    return std::nullopt;
}

std::shared_ptr<const DesktopIndex> DesktopCatalog::current() {
    if (!index_ || hasChanged()) {
        // Before the entries are read: what changes meanwhile is then seen the next time.
        watchFolders();
        index_ = std::make_shared<const DesktopIndex>(readDesktopApps(places_));
    }
    return index_;
}

bool DesktopCatalog::hasChanged() const {
    return std::any_of(watched_.begin(), watched_.end(), [](const WatchedFolder& folder) {
        return timeOfChange(folder.path) != folder.changed;
    });
}

void DesktopCatalog::watchFolders() {
    watched_.clear();
    for (const std::string& folder : places_.entryFolders) {
        watched_.push_back({folder, timeOfChange(folder)});
        forEachBelow(folder, [&](const fs::directory_entry& entry) {
            std::error_code error;
            if (entry.is_directory(error)) {
                watched_.push_back({entry.path().string(), timeOfChange(entry.path().string())});
            }
        });
    }
}

} // namespace pacelet::Linux
