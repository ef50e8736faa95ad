#pragma once

#include "Core/Platform/ShellOutput.h"
#include "Hosts/Linux/Systemd/Unit.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Answers `launchctl list` with the services of systemd, the system's and the user's.
namespace pacelet::Linux::LaunchctlTool {

/// Where the services stand when no bus tells them.
struct Places {
    std::string cgroupFolder;
    std::string procFolder;
    std::uint32_t uid = 0;
};

/// The Mac's listing: a header, then pid, status and label separated by tabs, with "-" for the pid
/// of what does not run.
std::string listing(std::span<const Unit> units);

/// Asks the managers of the system and of the user on their buses; where the system's does not
/// answer, the tree of control groups stands in for both. Status 1 and a sentence on standard error
/// for any other command line. Takes a few seconds at most. Any thread.
Shell::Output run(const std::vector<std::string>& arguments, const Places& places);

} // namespace pacelet::Linux::LaunchctlTool
