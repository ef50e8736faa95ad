#pragma once

#include "PaceletApp/Scheduler/Scheduler.h"

#include <functional>
#include <memory>
#include <vector>

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

    /// Whether each piece of work that begins from now on has a thread of its own, so that it may
    /// stand still. Still only one of all threads ever runs.
    void useThreads(bool uses) { usesThreads_ = uses; }

    /// Called by work that has a thread of its own: time passes on without it until `release`.
    void standStill();

    /// The same for so long. Work without a thread of its own takes no time.
    void standStill(Seconds duration);

    /// What stands still until it is released goes on, each at this moment.
    void release();

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
    class Strand;

    void arm() override {}
    void start(BackgroundJob& job) override;
    void jobDone(BackgroundJob&) override {}
    void goOn(const std::shared_ptr<Strand>& strand);

    ClockMover moveClock_;
    Seconds backgroundDuration_{0};
    std::size_t pendingJobs_ = 0;
    std::vector<std::shared_ptr<Strand>> standing_; ///< until they are released
    bool usesThreads_ = false;
    bool advancing_ = false;
};

} // namespace pacelet
