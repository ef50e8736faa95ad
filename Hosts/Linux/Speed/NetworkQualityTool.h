#pragma once

#include "Core/Platform/ShellOutput.h"
#include "Hosts/Linux/Speed/SpeedServer.h"

#include <atomic>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// Tests the speed of the line to the internet, and tells it in the Mac's document. Safe from any
/// thread.
class NetworkQualityTool {
public:
    explicit NetworkQualityTool(SpeedServer server);

    /// Understands -c, -M and a number of seconds from 1 to 60; status 64 for anything else, 1 for
    /// a test that gave no result. Blocks for that time at most.
    Shell::Output run(const std::vector<std::string>& arguments);

    /// Ends the tests that run, and all later ones, without a result.
    void stop() { stopped_ = true; }

private:
    SpeedServer server_;
    std::atomic<bool> stopped_ = false;
};

} // namespace pacelet::Linux
