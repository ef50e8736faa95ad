#include "PaceletApp/Scheduler/VirtualScheduler.h"

#include "Core/Support/Precondition.h"

#include <algorithm>

namespace pacelet {

namespace {

/// Two sums of the same durations may differ in their last digits.
constexpr Seconds rounding{1e-6};

} // namespace

VirtualScheduler::VirtualScheduler(Clock& clock, ClockMover moveClock)
    : Scheduler{clock},
      moveClock_{std::move(moveClock)} {}

VirtualScheduler::~VirtualScheduler() {
    close();
}

void VirtualScheduler::advance(Seconds duration) {
    precondition(!advancing_, "virtual time is advanced from within itself");
    advancing_ = true;
    const MonotonicTime end = monotonicNow() + duration;
    for (auto due = events().nextDue(); due && *due <= end + rounding; due = events().nextDue()) {
        moveClock_(std::max(*due - monotonicNow(), Seconds{0}));
        events().takeFirst()();
    }
    moveClock_(std::max(end - monotonicNow(), Seconds{0}));
    advancing_ = false;
}

void VirtualScheduler::start(BackgroundJob& job) {
    ++pendingJobs_;
    events().add(monotonicNow() + backgroundDuration_, [this, &job] {
        --pendingJobs_;
        if (!isClosed()) {
            job.run();
        }
        job.finish();
    });
}

} // namespace pacelet
