#pragma once

#include "Core/Platform/NetworkLink.h"

#include <string>

namespace pacelet::Linux {

/// The link to the internet as the kernel tells it. Safe from any thread.
class NetworkLink final : public pacelet::NetworkLink {
public:
    explicit NetworkLink(std::string sysFolder);

    std::unique_ptr<WiFiInterface> wifiInterface() override;
    std::shared_ptr<PathMonitor> makePathMonitor() override;

private:
    std::string sysFolder_;
};

} // namespace pacelet::Linux
