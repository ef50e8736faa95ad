#pragma once

#include "Core/Platform/BackgroundItemSource.h"
#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Background/AutostartFile.h"
#include "Hosts/Linux/Background/EnabledUnits.h"
#include "Hosts/Linux/Background/FileCache.h"
#include "Hosts/Linux/Background/ItemOwners.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// What is set up to run on a Linux desktop, told by files alone: autostart entries, enabled units
/// of the user, and those of the system that are not part of it itself.
class DesktopItems final : public BackgroundItemSource {
public:
    struct Sources {
        DesktopPlaces places;
        std::string configFolder; ///< the user's
        /// Folders of autostart entries for all users, in order of precedence.
        std::vector<std::string> autostartFolders;
        UnitFolders systemUnits;
        UnitFolders userUnits;
        std::string dpkgFolder = "/var/lib/dpkg";

        /// XDG_CONFIG_DIRS tells the folders for all users.
        static Sources standard(const DesktopPlaces& places, const std::string& configFolder,
                                const std::string& dataFolder);
    };
    using FindApps = std::function<std::shared_ptr<const DesktopIndex>()>;

    DesktopItems(Sources sources, FindApps findApps)
        : sources_{std::move(sources)},
          findApps_{std::move(findApps)},
          owners_{sources_.dpkgFolder} {}

    std::vector<BackgroundItem> items() override;

private:
    /// An item as its file has it, before its owner is known.
    struct Found {
        BackgroundItem item;
        std::string program; ///< links resolved; empty when it is not known
        std::string appID;   ///< of the entry in the menu with the same name
    };

    void addAutostart(std::vector<Found>& found);
    void addAutostartFolder(const std::string& folder, ItemScope scope,
                            std::vector<std::string>& names, std::vector<Found>& found);
    void addUnits(const UnitFolders& folders, std::vector<Found>& found);
    std::string resolvedProgram(const std::string& program) const;
    void learnOwners(const std::vector<Found>& found);
    bool isHidden(const Found& found) const;
    BackgroundItem finished(Found found, const DesktopIndex& apps) const;
    const Package* packageOf(const Found& found) const;

    Sources sources_;
    FindApps findApps_;
    std::mutex mutex_;
    FileCache<AutostartFile> entries_;
    FileCache<UnitFile> units_;
    PackageOwners owners_;
};

} // namespace pacelet::Linux
