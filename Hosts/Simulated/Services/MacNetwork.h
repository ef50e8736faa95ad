#pragma once

#include "Core/Platform/NetworkLink.h"
#include "Hosts/Simulated/Machine.h"

namespace pacelet::Simulated {

/// When a path monitor hears of the present path.
enum class PathDelivery {
    atOnce,   ///< while it starts
    onDemand, ///< when `deliver` is called
};

class PathUpdates;

class MacNetwork : public NetworkLink {
public:
    explicit MacNetwork(Machine& machine);

    std::unique_ptr<WiFiInterface> wifiInterface() override;
    std::shared_ptr<PathMonitor> makePathMonitor() override;
    bool isExpensive() override;

    void setDelivery(PathDelivery delivery);

    /// Tells the present path to every monitor that was started and not cancelled before this call,
    /// `updates` times; a monitor that is cancelled meanwhile still gets the rest of them.
    void deliver(int updates = 1);

    /// Changes the path and tells every monitor.
    void setPath(NetworkPath path);

private:
    Machine& machine_;
    std::shared_ptr<PathUpdates> updates_;
};

} // namespace pacelet::Simulated
