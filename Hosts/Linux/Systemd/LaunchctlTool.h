#pragma once

#include "Core/Platform/ShellOutput.h"
#include "Hosts/Linux/Systemd/Unit.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Answers `launchctl list` with the running services of systemd, the system's and the user's. They
/// are read from the tree of control groups, so that no service manager is asked; what does not run
/// is missing.
namespace pacelet::Linux::LaunchctlTool {

struct Places {
    std::string cgroupFolder;
    std::string procFolder;
    std::uint32_t uid = 0;
};

/// The Mac's listing: a header, then pid, status and label separated by tabs.
std::string listing(std::span<const Unit> units);

/// Status 1 and a sentence on standard error for any other command line. Any thread.
Shell::Output run(const std::vector<std::string>& arguments, const Places& places);

} // namespace pacelet::Linux::LaunchctlTool
