#include "Core/Internet/LinkReader.h"

#include "Core/Internet/OnceFlag.h"

#include <memory>
#include <utility>

namespace pacelet::LinkReader {

namespace {

WiFiBand bandOf(std::optional<int> channelBand) {
    switch (channelBand.value_or(0)) {
    case 1:
        return WiFiBand::ghz2_4;
    case 2:
        return WiFiBand::ghz5;
    case 3:
        return WiFiBand::ghz6;
    default:
        return WiFiBand::unknown;
    }
}

/// One reading under way. The handler keeps it alive, and it keeps the monitor alive until the
/// reading has been claimed.
struct Reading {
    OnceFlag flag{};
    std::shared_ptr<PathMonitor> monitor;
    std::function<void(LinkType)> completion;
};

void finish(Reading& reading, const NetworkPath& path) {
    // A second update may be on its way when the monitor is cancelled, or come at the same time.
    if (!reading.flag.claim()) {
        return;
    }
    // Monitor and handler own each other; taking the monitor out lets both go.
    const std::shared_ptr<PathMonitor> monitor = std::move(reading.monitor);
    const std::function<void(LinkType)> completion = std::move(reading.completion);
    monitor->cancel();
    completion(typeOf(path));
}

} // namespace

std::optional<WiFiLink> wifi(NetworkLink& network) {
    const std::unique_ptr<WiFiInterface> interface = network.wifiInterface();
    if (!interface || interface->rssiValue() == 0) {
        return std::nullopt;
    }
    WiFiLink link;
    link.band = bandOf(interface->channelBand());
    link.rssi = interface->rssiValue();
    if (link.rssi == 0) {
        // The association was lost between the two readings.
        return std::nullopt;
    }
    link.noise = interface->noiseMeasurement();
    link.transmitRateMbps = interface->transmitRate();
    return link;
}

void currentType(NetworkLink& network, std::function<void(LinkType)> completion) {
    const std::shared_ptr<PathMonitor> monitor = network.makePathMonitor();
    const auto reading = std::make_shared<Reading>();
    reading->monitor = monitor;
    reading->completion = std::move(completion);
    monitor->start("app.pacelet.path", [reading](NetworkPath path) {
        // Cancelling may destroy this very closure, and what it holds with it.
        const auto held = reading; // NOLINT(performance-unnecessary-copy-initialization)
        finish(*held, path);
    });
}

LinkType typeOf(const NetworkPath& path) {
    if (!path.satisfied) {
        return LinkType::offline;
    }
    if (path.usesWiFi) {
        return LinkType::wifi;
    }
    return path.usesWiredEthernet ? LinkType::ethernet : LinkType::other;
}

} // namespace pacelet::LinkReader
