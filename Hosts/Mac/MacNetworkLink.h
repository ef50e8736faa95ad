#pragma once

#include "Core/Platform/NetworkLink.h"

namespace pacelet::Mac {

/// Wi-Fi through CoreWLAN, the way to the internet through Network's path monitor.
class MacNetworkLink final : public NetworkLink {
public:
    std::unique_ptr<WiFiInterface> wifiInterface() override;
    std::shared_ptr<PathMonitor> makePathMonitor() override;
    bool isExpensive() override;
};

} // namespace pacelet::Mac
