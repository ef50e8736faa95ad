#include "Hosts/Linux/Systemd/SleepWatcher.h"

#include <algorithm>
#include <array>
#include <poll.h>
#include <sys/eventfd.h>
#include <utility>

namespace pacelet::Linux {

namespace {

constexpr std::chrono::microseconds callLimit = std::chrono::seconds{1};

/// Milliseconds for `poll`, -1 for no limit, until the bus wants to be looked after.
int millisecondsLeft(sd_bus* bus) {
    std::uint64_t deadline = 0;
    if (sd_bus_get_timeout(bus, &deadline) < 0 || deadline == UINT64_MAX) {
        return -1;
    }
    const auto now = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
    const auto left = static_cast<std::int64_t>(deadline) - now.count();
    return static_cast<int>(std::clamp<std::int64_t>(left / 1000 + 1, 0, 60'000));
}

} // namespace

SleepWatcher::SleepWatcher(PostToUI postToUI, std::function<void()> willSleep,
                           std::function<void()> didWake)
    : postToUI_{std::move(postToUI)}, observer_{std::make_shared<Observer>(
                                          Observer{std::move(willSleep), std::move(didWake)})},
      posted_{observer_}, stop_{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)} {
    if (stop_ && postToUI_) {
        thread_ = std::thread{[this] { listen(); }};
    }
}

SleepWatcher::~SleepWatcher() {
    if (thread_.joinable()) {
        ::eventfd_write(stop_.get(), 1);
        thread_.join();
    }
}

void SleepWatcher::listen() {
    const Bus bus = openBus(BusKind::system, callLimit);
    if (bus == nullptr ||
        sd_bus_match_signal(bus.get(), nullptr, "org.freedesktop.login1", "/org/freedesktop/login1",
                            "org.freedesktop.login1.Manager", "PrepareForSleep", onSignal,
                            this) < 0) {
        return;
    }
    for (;;) {
        const int progress = sd_bus_process(bus.get(), nullptr);
        if (progress < 0 || (progress == 0 && !waitForMore(bus.get()))) {
            return;
        }
    }
}

bool SleepWatcher::waitForMore(sd_bus* bus) const {
    const int events = sd_bus_get_events(bus);
    std::array<pollfd, 2> sources{
        {{sd_bus_get_fd(bus), static_cast<short>(events), 0}, {stop_.get(), POLLIN, 0}}};
    if (events < 0) {
        return false;
    }
    ::poll(sources.data(), sources.size(), millisecondsLeft(bus));
    return sources[1].revents == 0;
}

int SleepWatcher::onSignal(sd_bus_message* message, void* watcher, sd_bus_error*) {
    int isGoing = 0;
    if (sd_bus_message_read(message, "b", &isGoing) > 0) {
        const SleepWatcher& self = *static_cast<SleepWatcher*>(watcher);
        self.postToUI_([observer = self.posted_, isGoing] {
            if (const auto there = observer.lock()) {
                (isGoing != 0 ? there->willSleep : there->didWake)();
            }
        });
    }
    return 0;
}

} // namespace pacelet::Linux
