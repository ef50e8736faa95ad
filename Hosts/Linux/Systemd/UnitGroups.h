#pragma once

#include "Hosts/Linux/Systemd/Unit.h"

#include <cstdint>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// The services that run, as the tree of control groups shows them, by name: those of the system,
/// then those of the user. What is loaded and does not run has no group and is missing. A service's
/// main process is its first one whose parent is not of the service. Empty without such a tree.
/// The folders are "/sys/fs/cgroup" and "/proc" but in tests.
std::vector<Unit> readUnitGroups(const std::string& cgroupFolder, const std::string& procFolder,
                                 std::uint32_t uid);

} // namespace pacelet::Linux
