#pragma once

#include <cstdint>
#include <string>

namespace pacelet::Linux {

/// Where what goes over a network interface ends up.
enum class InterfaceKind : std::uint8_t {
    device, ///< one of the machine's own devices: it leaves the machine
    local,  ///< loopback, or a bridge to containers and virtual machines: it stays here
    other,  ///< a tunnel, a bridge over devices, or what a container has in place of a device
};

/// As `/sys/class/net` tells.
InterfaceKind interfaceKind(const std::string& sysFolder, const std::string& interface);

} // namespace pacelet::Linux
