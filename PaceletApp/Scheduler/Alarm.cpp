#include "PaceletApp/Scheduler/Alarm.h"

#include "Core/Support/Precondition.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <utility>

#ifdef __linux__
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#endif

namespace pacelet {

namespace {

/// The clock that counts on while the machine sleeps.
#ifdef __linux__
constexpr clockid_t waitClock = CLOCK_BOOTTIME;
#else
constexpr clockid_t waitClock = CLOCK_MONOTONIC;
#endif

} // namespace

MonotonicTime Alarm::now() {
    timespec time{};
    clock_gettime(waitClock, &time);
    return MonotonicTime{Seconds{static_cast<double>(time.tv_sec)} +
                         Seconds{static_cast<double>(time.tv_nsec) / 1e9}};
}

#ifdef __linux__

namespace {

/// A wait of more than thirty years counts as that long; it keeps the arithmetic in range.
constexpr Seconds farthestWait{1e9};

timespec toTimespec(Seconds sinceBoot) {
    const double clamped = std::min(sinceBoot.count(), farthestWait.count());
    const double whole = std::floor(clamped);
    // Rounded up: a timer that fires a trifle early would have to be set again.
    auto nanoseconds = static_cast<long>(std::ceil((clamped - whole) * 1e9)) + 1;
    auto seconds = static_cast<time_t>(whole);
    if (nanoseconds >= 1'000'000'000) {
        nanoseconds -= 1'000'000'000;
        ++seconds;
    }
    return timespec{seconds, nanoseconds};
}

/// Without its descriptor the program cannot wait for anything.
Descriptor opened(int descriptor) {
    precondition(descriptor >= 0, "the system has no descriptor left for the scheduler");
    return Descriptor{descriptor};
}

void drain(int descriptor) {
    std::uint64_t count = 0;
    while (read(descriptor, &count, sizeof count) < 0 && errno == EINTR) {
    }
}

} // namespace

Alarm::Alarm(std::function<void()> due)
    : timer_{opened(timerfd_create(waitClock, TFD_CLOEXEC | TFD_NONBLOCK))},
      notifier_{timer_.get(), QSocketNotifier::Read} {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this, tell = std::move(due)] {
        drain(timer_.get());
        tell();
    });
}

void Alarm::set(std::optional<MonotonicTime> due) {
    itimerspec setting{};
    if (due) {
        setting.it_value = toTimespec(due->time_since_epoch());
    }
    const int status = timerfd_settime(timer_.get(), TFD_TIMER_ABSTIME, &setting, nullptr);
    precondition(status == 0, "timerfd_settime failed");
}

#else

Alarm::Alarm(std::function<void()> due) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, std::move(due));
}

void Alarm::set(std::optional<MonotonicTime> due) {
    if (!due) {
        timer_.stop();
        return;
    }
    // Well in the range of Qt's timers.
    constexpr Seconds farthestWait = std::chrono::hours{24};
    const Seconds wait = std::clamp(Seconds{*due - now()}, Seconds{0}, farthestWait);
    // Rounded up: a timer that fires a trifle early would have to be set again.
    timer_.start(std::chrono::milliseconds{static_cast<long>(std::ceil(wait.count() * 1e3))});
}

#endif

} // namespace pacelet
