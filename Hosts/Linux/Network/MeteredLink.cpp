#include "Hosts/Linux/Network/MeteredLink.h"

#include "Hosts/Linux/Systemd/Bus.h"

#include <cstdint>

namespace pacelet::Linux {

namespace {

constexpr std::chrono::microseconds longestQuestion = std::chrono::milliseconds{500};

/// NMMetered, as the network manager documents it.
enum Metering : std::uint32_t { yes = 1, guessYes = 3 };

} // namespace

bool isMetered() {
    const Bus bus = openBus(BusKind::system, longestQuestion);
    std::uint32_t metering = 0;
    return bus != nullptr &&
           sd_bus_get_property_trivial(
               bus.get(), "org.freedesktop.NetworkManager", "/org/freedesktop/NetworkManager",
               "org.freedesktop.NetworkManager", "Metered", nullptr, 'u', &metering) >= 0 &&
           (metering == Metering::yes || metering == Metering::guessYes);
}

} // namespace pacelet::Linux
