#include "Hosts/Linux/Systemd/Bus.h"

namespace pacelet::Linux {

namespace {

using SteadyClock = std::chrono::steady_clock;

/// The first call would wait for the bus as well, but for as long as the library likes.
bool becomesReady(sd_bus* bus, SteadyClock::time_point deadline) {
    for (;;) {
        const int progress = sd_bus_process(bus, nullptr);
        if (progress < 0) {
            return false;
        }
        if (sd_bus_is_ready(bus) > 0) {
            return true;
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::microseconds>(deadline - SteadyClock::now());
        if (left.count() <= 0 ||
            (progress == 0 && sd_bus_wait(bus, static_cast<std::uint64_t>(left.count())) < 0)) {
            return false;
        }
    }
}

} // namespace

Bus openBus(BusKind kind, std::chrono::microseconds limit) {
    const auto deadline = SteadyClock::now() + limit;
    sd_bus* opened = nullptr;
    const int result =
        kind == BusKind::system ? sd_bus_open_system(&opened) : sd_bus_open_user(&opened);
    Bus bus{opened};
    if (result < 0 || !becomesReady(bus.get(), deadline)) {
        return nullptr;
    }
    sd_bus_set_method_call_timeout(bus.get(), static_cast<std::uint64_t>(limit.count()));
    return bus;
}

} // namespace pacelet::Linux
