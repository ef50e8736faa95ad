#pragma once

#include "Core/Platform/NetworkLink.h"
#include "Hosts/Linux/Network/NetlinkSocket.h"
#include "Hosts/Linux/Network/RouteTable.h"

#include <optional>
#include <string>

namespace pacelet::Linux {

/// What sort of device stands behind an interface, by what the kernel's driver model says of it.
enum class DeviceSort { wireless, modem, plain };

/// Looks the interface up below `sysFolder`, which is /sys.
DeviceSort readDeviceSort(const std::string& sysFolder, const std::string& interfaceName);

/// Asks for the interface that traffic to the internet takes; nothing without one.
std::optional<Interface> readDefaultInterface(NetlinkSocket& routing);

/// The way to the internet as it is now.
NetworkPath readPath(NetlinkSocket& routing, const std::string& sysFolder);

} // namespace pacelet::Linux
