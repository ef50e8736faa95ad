#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace pacelet {

/// The default Wi-Fi interface, each reading taken at the moment of the call.
class WiFiInterface {
public:
    virtual ~WiFiInterface() = default;

    virtual std::int64_t rssiValue() = 0;        ///< dBm; 0 while not associated
    virtual std::int64_t noiseMeasurement() = 0; ///< dBm
    virtual double transmitRate() = 0;           ///< megabits per second
    /// 1 for 2.4 GHz, 2 for 5 GHz, 3 for 6 GHz, 0 for unknown; nothing without a channel.
    virtual std::optional<int> channelBand() = 0;
};

/// What the system says of the way to the internet.
struct NetworkPath {
    bool satisfied = false;
    bool usesWiFi = false;
    bool usesWiredEthernet = false;

    bool operator==(const NetworkPath&) const = default;
};

/// Reports the present path soon after it was started, and then every change of it, on a thread of
/// its own. A last update may still be under way when `cancel` is called. Cancelling and destroying
/// it are allowed from any thread, from within `update` too.
class PathMonitor {
public:
    virtual ~PathMonitor() = default;

    /// Starts reporting, once; `queueLabel` names the thread.
    virtual void start(const std::string& queueLabel, std::function<void(NetworkPath)> update) = 0;
    virtual void cancel() = 0;
};

/// The link to the internet.
class NetworkLink {
public:
    virtual ~NetworkLink() = default;

    /// The default Wi-Fi interface, or null when there is none. Any thread.
    virtual std::unique_ptr<WiFiInterface> wifiInterface() = 0;

    virtual std::shared_ptr<PathMonitor> makePathMonitor() = 0;

    /// Whether data on the present way to the internet is counted and may cost money, as far as the
    /// system knows. It may block for a moment, so never on the UI thread.
    virtual bool isExpensive() = 0;
};

} // namespace pacelet
