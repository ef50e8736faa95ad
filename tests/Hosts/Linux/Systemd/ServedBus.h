#pragma once

#include "Hosts/Linux/Systemd/Bus.h"

#include <atomic>
#include <functional>
#include <thread>
#include <utility>

namespace pacelet::testing {

/// Serves what stands on a connection to the bus, on a thread of its own.
class ServedBus {
public:
    /// `onIdle` is called between messages.
    explicit ServedBus(
        Linux::Bus bus, std::function<void(sd_bus*)> onIdle = [](sd_bus*) {})
        : bus_{std::move(bus)},
          onIdle_{std::move(onIdle)},
          thread_{[this] { serve(); }} {}
    ServedBus(const ServedBus&) = delete;
    ServedBus& operator=(const ServedBus&) = delete;
    ~ServedBus() {
        isDone_ = true;
        thread_.join();
    }

private:
    void serve() {
        while (!isDone_) {
            while (sd_bus_process(bus_.get(), nullptr) > 0) {
            }
            onIdle_(bus_.get());
            sd_bus_wait(bus_.get(), 5'000);
        }
    }

    Linux::Bus bus_;
    std::function<void(sd_bus*)> onIdle_;
    std::atomic<bool> isDone_{false};
    std::thread thread_;
};

} // namespace pacelet::testing
