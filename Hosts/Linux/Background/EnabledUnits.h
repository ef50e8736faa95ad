#pragma once

#include "Core/Platform/BackgroundItem.h"
#include "Hosts/Linux/Background/FileCache.h"
#include "Hosts/Linux/Background/UnitFile.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// A unit that a service manager starts by itself.
struct EnabledUnit {
    std::string name; ///< with its ending; its own where it was enabled by another
    std::string path; ///< of its file
    ItemScope scope = ItemScope::systemDaemon;
    UnitFile file;                     ///< with all that changes it
    std::optional<UnitFile> started{}; ///< of the service that it starts; nothing when it is one
};

/// The folders of one service manager.
struct UnitFolders {
    /// A folder with links to what is enabled in it, and for whom that runs.
    struct Enabling {
        std::string path;
        ItemScope scope;
    };
    std::vector<Enabling> enabling;
    std::vector<std::string> files;        ///< where units lie, in order of precedence
    std::vector<std::string_view> endings; ///< the kinds of units that count

    static UnitFolders ofSystem();

    /// `configFolder` and `dataFolder` are the user's.
    static UnitFolders ofUser(const std::string& configFolder, const std::string& dataFolder);
};

/// What is enabled by the links in these folders, told by files alone, each unit once whatever
/// names it has. A unit that is linked to by another name of its own, as display managers are, is
/// enabled, too; not so by a name on the bus alone, which starts it when somebody asks for it.
/// Masked units, and those of which there is no file, are left out; so is what starts a service
/// that is enabled itself.
std::vector<EnabledUnit> enabledUnits(const UnitFolders& folders, FileCache<UnitFile>& cache);

} // namespace pacelet::Linux
