#include "PaceletApp/Scheduler/RealScheduler.h"

#include "Core/Support/Precondition.h"

#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <ctime>

namespace pacelet {

namespace {

/// Counts on while the machine sleeps, and a timer on it that fell due in between fires on waking.
constexpr clockid_t waitClock = CLOCK_BOOTTIME;

/// The work blocks on tools far more than it computes, so there are more threads than cores: a
/// speed test and an unanswered password prompt must not hold up the next look at the machine.
constexpr std::size_t mostThreads = 16;

/// A wait of more than thirty years counts as that long; it keeps the arithmetic in range.
constexpr Seconds longestWait{1e9};

timespec toTimespec(Seconds sinceBoot) {
    const double clamped = std::min(sinceBoot.count(), longestWait.count());
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

/// Without its two descriptors the program cannot wait for anything.
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

RealScheduler::RealScheduler(Clock& clock)
    : Scheduler{clock},
      timer_{opened(timerfd_create(waitClock, TFD_CLOEXEC | TFD_NONBLOCK))},
      mailbox_{opened(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))},
      timerNotifier_{timer_.get(), QSocketNotifier::Read},
      mailboxNotifier_{mailbox_.get(), QSocketNotifier::Read},
      pool_{mostThreads} {
    QObject::connect(&timerNotifier_, &QSocketNotifier::activated, [this] { timerFired(); });
    QObject::connect(&mailboxNotifier_, &QSocketNotifier::activated, [this] { finishJobs(); });
}

RealScheduler::~RealScheduler() {
    pool_.waitForDone(longestWait);
    close();
    finishJobs();
}

MonotonicTime RealScheduler::monotonicNow() {
    timespec now{};
    clock_gettime(waitClock, &now);
    return MonotonicTime{Seconds{static_cast<double>(now.tv_sec)} +
                         Seconds{static_cast<double>(now.tv_nsec) / 1e9}};
}

bool RealScheduler::waitForBackground(Seconds limit) {
    return pool_.waitForDone(limit);
}

void RealScheduler::arm() {
    itimerspec setting{};
    if (const auto due = events().nextDue()) {
        setting.it_value = toTimespec(due->time_since_epoch());
    }
    const int status = timerfd_settime(timer_.get(), TFD_TIMER_ABSTIME, &setting, nullptr);
    precondition(status == 0, "timerfd_settime failed");
}

void RealScheduler::timerFired() {
    drain(timer_.get());
    events().runDue(monotonicNow());
    arm();
}

void RealScheduler::start(BackgroundJob& job) {
    pool_.start([&job] { job.run(); });
}

void RealScheduler::jobDone(BackgroundJob& job) {
    {
        const std::lock_guard lock{finishedMutex_};
        finished_.push_back(&job);
    }
    const std::uint64_t one = 1;
    // Only a counter near its 64-bit limit could refuse this.
    const ssize_t written = write(mailbox_.get(), &one, sizeof one);
    precondition(written == sizeof one, "a finished job could not be announced");
}

void RealScheduler::finishJobs() {
    drain(mailbox_.get());
    std::vector<BackgroundJob*> finished;
    {
        const std::lock_guard lock{finishedMutex_};
        finished.swap(finished_);
    }
    for (BackgroundJob* job : finished) {
        job->finish();
    }
}

} // namespace pacelet
