#include "Hosts/Linux/Network/NetworkLink.h"

#include "Hosts/Linux/Network/RoutePathMonitor.h"
#include "Hosts/Linux/Network/WiFiReader.h"

#include <utility>

namespace pacelet::Linux {

NetworkLink::NetworkLink(std::string sysFolder) : sysFolder_{std::move(sysFolder)} {}

std::unique_ptr<WiFiInterface> NetworkLink::wifiInterface() {
    return readWiFiInterface();
}

std::shared_ptr<PathMonitor> NetworkLink::makePathMonitor() {
    return std::make_shared<RoutePathMonitor>(sysFolder_);
}

} // namespace pacelet::Linux
