#pragma once

#include "Hosts/Linux/Proc/AppProcess.h"

#include <span>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// One running copy of an application.
struct AppInstance {
    std::string bundlePath;
    std::string bundleIdentifier;
    std::string executablePath;           ///< of its first leader
    std::vector<ProcessIdentity> leaders; ///< the copy runs as long as one of them does
    std::vector<ProcessIdentity> helpers;

    bool operator==(const AppInstance&) const = default;
};

/// Folds processes into running copies, in order of their first process: one for each main process,
/// with the helpers that descend from it. Helpers without a main process above them go to the first
/// copy of their application; where it has none at all, they are a copy together and lead it.
std::vector<AppInstance> appInstances(std::span<const AppProcess> processes);

} // namespace pacelet::Linux
