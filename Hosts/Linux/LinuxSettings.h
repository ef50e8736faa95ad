#pragma once

#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Speed/SpeedServer.h"
#include "Hosts/Linux/Systemd/PostToUI.h"

#include <string>
#include <vector>

namespace pacelet::Linux {

/// Where a Linux machine is read, and where the user's own files stand.
struct LinuxSettings {
    std::string procFolder = "/proc";
    std::string sysFolder = "/sys";
    std::string runFolder = "/run";
    DesktopPlaces places = DesktopPlaces::fromEnvironment();
    std::string configFolder = standardConfigFolder(places.home);
    std::string dataFolder = standardDataFolder(places.home);
    std::string display = standardDisplay(); ///< as in DISPLAY; empty for none
    std::string program = ownProgram();      ///< what is to be started at login
    std::string journalSocket = "/run/systemd/journal/socket";
    std::string systemRoot = "/"; ///< where "etc" and "usr" stand
    /// Where browsers find us: one of the user's own. Empty where they are not to.
    std::string runtimeFolder;
    std::string bridgeProgram =
        besideProgram(program, {"pacelet-browser-bridge", "../libexec/pacelet-browser-bridge"});
    std::string extensionFolder = besideProgram(
        program, {"Pacelet_Core.bundle/browser-extension", "../share/pacelet/browser-extension"});
    SpeedServer speedServer{};
    PostToUI postToUI; ///< without it sleep and wake are not told

    /// XDG_CONFIG_HOME, else "~/.config".
    static std::string standardConfigFolder(const std::string& home);

    /// XDG_DATA_HOME, else "~/.local/share".
    static std::string standardDataFolder(const std::string& home);

    static std::string standardDisplay();

    /// The path of the running program; empty when it cannot be told.
    static std::string ownProgram();

    /// The first of the places, seen from the folder of `program`, where there is something; the
    /// first of all when there is nothing.
    static std::string besideProgram(const std::string& program,
                                     const std::vector<std::string>& places);
};

} // namespace pacelet::Linux
