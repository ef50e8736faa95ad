#pragma once

#include "Hosts/Linux/Apps/AppAssociation.h"

#include <cstdint>
#include <string>

namespace pacelet::Linux {

/// Names one process for good: a pid alone is used again.
struct ProcessIdentity {
    std::int32_t pid = 0;
    std::uint64_t startTime = 0; ///< since boot, in clock ticks

    bool operator==(const ProcessIdentity&) const = default;
};

/// A process of an application.
struct AppProcess {
    ProcessIdentity identity;
    std::int32_t ppid = 0;
    AppRole role = AppRole::none;
    std::string appID; ///< desktop id of its application
    std::string path;  ///< under which it appears, in the application's bundle

    bool operator==(const AppProcess&) const = default;
};

} // namespace pacelet::Linux
