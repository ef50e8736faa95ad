#pragma once

#include "Hosts/Simulated/Model/ProcessTable.h"

#include <span>
#include <string_view>

namespace pacelet::Simulated {

/// One kind of process that runs on every Mac.
struct BackgroundProcess {
    User user;
    std::string_view path;
    double cpuPercent = 0;
    double megabytes = 0;
    int count = 1;
};

/// The kernel, launchd and what they start for the machine as a whole.
std::span<const BackgroundProcess> systemDaemons();

/// What runs for the user who has logged in.
std::span<const BackgroundProcess> userAgents();

} // namespace pacelet::Simulated
