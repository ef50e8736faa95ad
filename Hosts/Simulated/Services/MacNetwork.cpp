#include "Hosts/Simulated/Services/MacNetwork.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace pacelet::Simulated {

using PathUpdate = std::function<void(NetworkPath)>;

/// Who hears of the path. Calls no one while it is locked.
class PathUpdates {
public:
    void add(const void* owner, PathUpdate update) {
        const std::lock_guard lock{mutex_};
        listeners_.emplace_back(owner, std::move(update));
    }

    void remove(const void* owner) {
        const std::lock_guard lock{mutex_};
        std::erase_if(listeners_,
                      [owner](const auto& listener) { return listener.first == owner; });
    }

    std::vector<PathUpdate> all() {
        const std::lock_guard lock{mutex_};
        std::vector<PathUpdate> updates;
        for (const auto& listener : listeners_) {
            updates.push_back(listener.second);
        }
        return updates;
    }

    PathDelivery delivery() {
        const std::lock_guard lock{mutex_};
        return delivery_;
    }

    void setDelivery(PathDelivery delivery) {
        const std::lock_guard lock{mutex_};
        delivery_ = delivery;
    }

private:
    std::mutex mutex_;
    PathDelivery delivery_ = PathDelivery::atOnce;
    std::vector<std::pair<const void*, PathUpdate>> listeners_;
};

namespace {

class MacWiFi : public WiFiInterface {
public:
    explicit MacWiFi(Machine& machine)
        : machine_{machine} {}

    std::int64_t rssiValue() override { return now().rssi; }
    std::int64_t noiseMeasurement() override { return now().noise; }
    double transmitRate() override { return now().transmitRate; }
    std::optional<int> channelBand() override { return now().band; }

private:
    /// All zero once the radio is off.
    WiFi now() { return machine_.lock()->network.wifi.value_or(WiFi{0, 0, 0, std::nullopt}); }

    Machine& machine_;
};

class MacPathMonitor : public PathMonitor {
public:
    MacPathMonitor(Machine& machine, std::shared_ptr<PathUpdates> updates)
        : machine_{machine},
          updates_{std::move(updates)} {}
    ~MacPathMonitor() override { updates_->remove(this); }

    void start(const std::string&, PathUpdate update) override {
        updates_->add(this, update);
        if (updates_->delivery() == PathDelivery::atOnce) {
            const NetworkPath path = machine_.lock()->network.path;
            update(path);
        }
    }

    void cancel() override { updates_->remove(this); }

private:
    Machine& machine_;
    std::shared_ptr<PathUpdates> updates_;
};

} // namespace

MacNetwork::MacNetwork(Machine& machine)
    : machine_{machine},
      updates_{std::make_shared<PathUpdates>()} {}

std::unique_ptr<WiFiInterface> MacNetwork::wifiInterface() {
    if (!machine_.lock()->network.wifi) {
        return nullptr;
    }
    return std::make_unique<MacWiFi>(machine_);
}

std::shared_ptr<PathMonitor> MacNetwork::makePathMonitor() {
    return std::make_shared<MacPathMonitor>(machine_, updates_);
}

bool MacNetwork::isExpensive() {
    return machine_.lock()->network.isExpensive;
}

void MacNetwork::setDelivery(PathDelivery delivery) {
    updates_->setDelivery(delivery);
}

void MacNetwork::deliver(int updates) {
    const NetworkPath path = machine_.lock()->network.path;
    const std::vector<PathUpdate> listeners = updates_->all();
    for (int count = 0; count < updates; ++count) {
        for (const PathUpdate& listener : listeners) {
            listener(path);
        }
    }
}

void MacNetwork::setPath(NetworkPath path) {
    machine_.lock()->network.path = path;
    deliver();
}

} // namespace pacelet::Simulated
