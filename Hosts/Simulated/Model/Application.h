#pragma once

#include "Core/Platform/Workspace.h"
#include "Core/Support/Time.h"

#include <cstdint>
#include <string>
#include <vector>

namespace pacelet::Simulated {

/// How an application takes being asked to quit.
enum class QuitHabit {
    obeys,   ///< ends after its delay when asked, at once when forced
    resists, ///< does not react to a request, but can be forced
    hangs,   ///< nothing ends it but a restart
};

/// An application bundle on the disk.
struct InstalledApp {
    std::string name;             ///< "Google Chrome"
    std::string bundleIdentifier; ///< "com.google.Chrome"
    std::string path;             ///< "/Applications/Google Chrome.app"
    ActivationPolicy policy = ActivationPolicy::regular;
    std::int64_t footprint = 0; ///< of its main process when it is opened

    std::string executable() const { return path + "/Contents/MacOS/" + name; }
};

/// An application that runs. Its processes carry its number.
struct RunningApp {
    int number = 0;
    InstalledApp bundle;
    std::int32_t mainPid = 0;
    QuitHabit habit = QuitHabit::obeys;
    Seconds quitDelay{0};
    bool quitting = false;
};

} // namespace pacelet::Simulated
