#pragma once

#include "Hosts/Linux/Apps/DesktopIndex.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// Where a desktop keeps its menu entries and its programs.
struct DesktopPlaces {
    std::vector<std::string> entryFolders; ///< the "applications" folders, in order of precedence
    std::vector<std::string> searchPath;   ///< folders of programs, as in PATH
    std::vector<std::string> desktops;     ///< names of the running desktop, as in OnlyShowIn
    std::string home;

    /// From XDG_DATA_HOME, XDG_DATA_DIRS, PATH, XDG_CURRENT_DESKTOP and HOME, with the standard
    /// values for those that are not set. `home` is always an absolute path.
    static DesktopPlaces fromEnvironment();
};

/// Reads every entry that a menu shows. Files that are no such entries, and entries whose program
/// is not there, are left out.
std::vector<DesktopApp> readDesktopApps(const DesktopPlaces& places);

/// The file of the entry with this id that counts; nothing when there is none.
std::optional<std::string> findEntryFile(const DesktopPlaces& places, const std::string& id);

/// Keeps the index of the desktop's applications, and reads it anew when one of the folders has
/// changed. For one thread at a time.
class DesktopCatalog {
public:
    explicit DesktopCatalog(DesktopPlaces places)
        : places_{std::move(places)} {}

    /// The index as of now: a look at the time of change of each folder, mostly no more. A new
    /// object exactly when the entries have been read anew.
    std::shared_ptr<const DesktopIndex> current();

private:
    /// A folder of entries, and when it was changed; nothing while it does not exist.
    struct WatchedFolder {
        std::string path;
        std::optional<std::int64_t> changed;
    };

    bool hasChanged() const;
    void watchFolders();

    DesktopPlaces places_;
    std::vector<WatchedFolder> watched_;
    std::shared_ptr<const DesktopIndex> index_;
};

} // namespace pacelet::Linux
