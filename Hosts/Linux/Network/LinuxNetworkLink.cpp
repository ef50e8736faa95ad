#include "Hosts/Linux/Network/LinuxNetworkLink.h"

#include "Hosts/Linux/Network/MeteredLink.h"
#include "Hosts/Linux/Network/RoutePathMonitor.h"
#include "Hosts/Linux/Network/WiFiReader.h"

namespace pacelet::Linux {

LinuxNetworkLink::LinuxNetworkLink(const std::string& sysFolder)
    : follower_{std::make_shared<PathFollower>(sysFolder)} {}

LinuxNetworkLink::~LinuxNetworkLink() {
    follower_->stop();
}

std::unique_ptr<WiFiInterface> LinuxNetworkLink::wifiInterface() {
    return readWiFiInterface();
}

std::shared_ptr<PathMonitor> LinuxNetworkLink::makePathMonitor() {
    return std::make_shared<RoutePathMonitor>(follower_);
}

bool LinuxNetworkLink::isExpensive() {
    return isMetered();
}

} // namespace pacelet::Linux
