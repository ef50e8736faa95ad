#include "Hosts/Linux/Network/MeteredLink.h"
#include "tests/Hosts/Linux/Systemd/PrivateBus.h"
#include "tests/Hosts/Linux/Systemd/ServedBus.h"

#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

const sd_bus_vtable meteringTable[] = {
    SD_BUS_VTABLE_START(0), SD_BUS_PROPERTY("Metered", "u", nullptr, 0, 0), SD_BUS_VTABLE_END};

Bus networkManager(std::uint32_t& metering) {
    Bus bus = openBus(BusKind::system, std::chrono::seconds{1});
    sd_bus_add_object_vtable(bus.get(), nullptr, "/org/freedesktop/NetworkManager",
                             "org.freedesktop.NetworkManager", meteringTable, &metering);
    sd_bus_request_name(bus.get(), "org.freedesktop.NetworkManager", 0);
    return bus;
}

TEST(MeteredLink, IsWhatTheNetworkManagerSaysOrGuesses) {
    pacelet::testing::PrivateBus daemon;
    if (!daemon.runs()) {
        GTEST_SKIP() << "no bus daemon is installed";
    }
    EXPECT_FALSE(isMetered()) << "nobody knows";
    // Unknown, yes, no, probably, probably not.
    for (std::uint32_t metering = 0; metering < 5; ++metering) {
        const pacelet::testing::ServedBus served{networkManager(metering)};
        EXPECT_EQ(isMetered(), metering == 1 || metering == 3) << metering;
    }
}

} // namespace
} // namespace pacelet::Linux
