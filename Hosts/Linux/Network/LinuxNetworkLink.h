#pragma once

#include "Core/Platform/NetworkLink.h"
#include "Hosts/Linux/Network/PathFollower.h"

#include <string>

namespace pacelet::Linux {

/// The link to the internet as the kernel tells it. Safe from any thread.
class LinuxNetworkLink final : public pacelet::NetworkLink {
public:
    explicit LinuxNetworkLink(const std::string& sysFolder);

    /// Monitors that are left are told no more.
    ~LinuxNetworkLink() override;

    std::unique_ptr<WiFiInterface> wifiInterface() override;
    std::shared_ptr<PathMonitor> makePathMonitor() override;
    bool isExpensive() override;

private:
    std::shared_ptr<PathFollower> follower_;
};

} // namespace pacelet::Linux
