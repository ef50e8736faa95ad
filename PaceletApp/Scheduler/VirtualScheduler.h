#pragma once

#include "PaceletApp/Scheduler/Scheduler.h"

#include <functional>

namespace pacelet {

/// Virtual time on one thread: nothing happens but in `advance`, in an order that is always the
/// same. Blocking work is one event at the moment when it ends, and what waits can act before that.
class VirtualScheduler final : public Scheduler {
public:
    /// Moves the virtual clock forward by a duration.
    using ClockMover = std::function<void(Seconds)>;

    /// `moveClock` moves `clock`, and whatever else lives in its time.
    VirtualScheduler(Clock& clock, ClockMover moveClock);
    ~VirtualScheduler() override;

    MonotonicTime monotonicNow() override { return clock().monotonicNow(); }

    /// How long work started from now on takes.
    void setBackgroundDuration(Seconds duration) { backgroundDuration_ = duration; }

    /// Lets `duration` pass, and runs what falls due in it, each at its own moment.
    void advance(Seconds duration);

    /// Runs what is due without letting time pass.
    void settle() { advance(Seconds{0}); }

    /// Lets `duration` pass while the machine sleeps: nothing runs, and what fell due stays due.
    void suspend(Seconds duration) { moveClock_(duration); }

    /// How many pieces of work are under way.
    std::size_t pendingJobs() const { return pendingJobs_; }

private:
    void arm() override {}
    void start(BackgroundJob& job) override;
    void jobDone(BackgroundJob&) override {}

    ClockMover moveClock_;
    Seconds backgroundDuration_{0};
    std::size_t pendingJobs_ = 0;
    bool advancing_ = false;
};

} // namespace pacelet
