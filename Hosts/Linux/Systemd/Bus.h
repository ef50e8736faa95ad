#pragma once

#include <chrono>
#include <memory>
#include <systemd/sd-bus.h>

namespace pacelet::Linux {

struct BusCloser {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};

/// A connection to a message bus; null without one. For one thread.
using Bus = std::unique_ptr<sd_bus, BusCloser>;

struct MessageReleaser {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using BusMessage = std::unique_ptr<sd_bus_message, MessageReleaser>;

enum class BusKind { system, user };

/// Connects to a bus and waits until it has let us in, for `limit` at most; null when there is no
/// such bus or it keeps silent. Each later call, too, ends within `limit`.
Bus openBus(BusKind kind, std::chrono::microseconds limit);

} // namespace pacelet::Linux
