#include "Hosts/Linux/Systemd/SleepWatcher.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace pacelet::Linux {

namespace {

constexpr const char* loginName = "org.freedesktop.login1";
constexpr const char* loginPath = "/org/freedesktop/login1";
constexpr const char* loginInterface = "org.freedesktop.login1.Manager";

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

/// Has the machine wait before it sleeps until this is closed; not open where the login manager
/// does not let us.
Descriptor takeDelay(sd_bus* bus) {
    sd_bus_message* reply = nullptr;
    if (sd_bus_call_method(bus, loginName, loginPath, loginInterface, "Inhibit", nullptr, &reply,
                           "ssss", "sleep", "Pacelet",
                           "Pacelet stops measuring before the machine sleeps", "delay") < 0) {
        return {};
    }
    const BusMessage answer{reply};
    int lock = -1;
    // The answer keeps its own.
    return sd_bus_message_read(reply, "h", &lock) > 0
               ? Descriptor{::fcntl(lock, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)}
               : Descriptor{};
}

} // namespace

SleepWatcher::SleepWatcher(PostToUI postToUI, std::function<void()> willSleep,
                           std::function<void()> didWake)
    : postToUI_{std::move(postToUI)},
      observer_{std::make_shared<Observer>(Observer{std::move(willSleep), std::move(didWake)})},
      posted_{observer_},
      stop_{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)} {
    if (stop_ && postToUI_) {
        try {
            thread_ = std::thread{[this] { listen(); }};
        } catch (const std::system_error&) {
            stop_.reset();
        }
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
        sd_bus_match_signal(bus.get(), nullptr, loginName, loginPath, loginInterface,
                            "PrepareForSleep", onSignal, this) < 0) {
        return;
    }
    for (;;) {
        if (std::exchange(needsDelay_, false)) {
            delay_ = takeDelay(bus.get());
        }
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
        static_cast<SleepWatcher*>(watcher)->tell(isGoing != 0);
    }
    return 0;
}

void SleepWatcher::tell(bool isGoing) {
    needsDelay_ = !isGoing;
    // The delay ends with the function that was posted, however that ends.
    const auto delay = std::make_shared<Descriptor>(isGoing ? std::move(delay_) : Descriptor{});
    postToUI_([observer = posted_, isGoing, delay] {
        if (const auto there = observer.lock()) {
            (isGoing ? there->willSleep : there->didWake)();
        }
        delay->reset();
    });
}

} // namespace pacelet::Linux
