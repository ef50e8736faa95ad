#pragma once

#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Systemd/PostToUI.h"

#include <string>

namespace pacelet::Linux {

/// Where a Linux machine is read, and where the user's own files stand.
struct LinuxSettings {
    std::string procFolder = "/proc";
    std::string sysFolder = "/sys";
    DesktopPlaces places = DesktopPlaces::fromEnvironment();
    std::string configFolder = standardConfigFolder(places.home);
    std::string dataFolder = standardDataFolder(places.home);
    std::string display = standardDisplay(); ///< as in DISPLAY; empty for none
    std::string program = ownProgram();      ///< what is to be started at login
    std::string journalSocket = "/run/systemd/journal/socket";
    PostToUI postToUI; ///< without it sleep and wake are not told

    /// XDG_CONFIG_HOME, else "~/.config".
    static std::string standardConfigFolder(const std::string& home);

    /// XDG_DATA_HOME, else "~/.local/share".
    static std::string standardDataFolder(const std::string& home);

    static std::string standardDisplay();

    /// The path of the running program; empty when it cannot be told.
    static std::string ownProgram();
};

} // namespace pacelet::Linux
