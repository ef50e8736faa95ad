#pragma once

#include "Core/Platform/Clock.h"
#include "Core/Support/Time.h"
#include "PaceletApp/Scheduler/AwaitReference.h"
#include "PaceletApp/Scheduler/BackgroundJob.h"
#include "PaceletApp/Scheduler/BackgroundTask.h"
#include "PaceletApp/Scheduler/EventQueue.h"

#include <QCoroTask>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <stop_token>
#include <type_traits>
#include <utility>

namespace pacelet {

/// Thrown out of a wait that the scheduler can no longer serve, because it is being destroyed: it
/// unwinds the waiting task.
class SchedulerClosed : public std::runtime_error {
public:
    SchedulerClosed()
        : std::runtime_error{"the scheduler is closed"} {}
};

/// Where the tasks of the UI thread wait: for time to pass, and for blocking work. Real time in the
/// program, virtual time in tests. Belongs to the UI thread and outlives all tasks' owners.
///
/// A task goes on when its owner has died. It therefore holds its owner weakly, and looks after
/// every wait whether it still lives.
class Scheduler {
public:
    virtual ~Scheduler();
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;

    /// The wall clock.
    TimePoint now() { return clock_.now(); }

    /// The clock of all waits: it goes on counting while the machine sleeps.
    virtual MonotonicTime monotonicNow() = 0;

    /// Waits for `duration`, with no tolerance. True when it passed in full; false when a stop
    /// was asked for, which ends the wait at once.
    QCoro::Task<bool> sleep(Seconds duration, std::stop_token stop = {});

    /// Waits for the UI thread's next turn. False when a stop was asked for.
    QCoro::Task<bool> nextTurn(std::stop_token stop = {});

    /// Runs `work` on the shared pool and gives back what it returns or throws. It is not cancelled
    /// with anything: it must own, or be sure to outlive, all that it refers to.
    template<typename Work>
    BackgroundTask<std::invoke_result_t<Work&>> runInBackground(Work work) {
        return BackgroundTask{runJob(std::move(work))};
    }

    /// How many sleeps have passed in full.
    std::uint64_t wakeups() const { return wakeups_; }

    /// How many tasks wait for time to pass.
    std::size_t pendingSleeps() const { return pendingSleeps_; }

protected:
    explicit Scheduler(Clock& clock)
        : clock_{clock} {}

    Clock& clock() { return clock_; }
    EventQueue& events() { return events_; }

    /// The next event may have changed.
    virtual void arm() = 0;

    /// Unwinds all tasks that still wait for an event, and refuses new waits from now on.
    void close();
    bool isClosed() const { return closed_; }

private:
    friend class BackgroundJob;
    class Sleep;

    template<typename Work>
    QCoro::Task<std::invoke_result_t<Work&>> runJob(Work work);

    /// Has the job run on another thread, as far as the UI thread can tell.
    virtual void start(BackgroundJob& job) = 0;

    /// Called on the thread that ran the job, as the last thing.
    virtual void jobDone(BackgroundJob& job) = 0;

    Clock& clock_;
    EventQueue events_;
    std::uint64_t wakeups_ = 0;
    std::size_t pendingSleeps_ = 0;
    bool closed_ = false;
};

template<typename Work>
QCoro::Task<std::invoke_result_t<Work&>> Scheduler::runJob(Work work) {
    using Result = std::invoke_result_t<Work&>;
    if constexpr (std::is_void_v<Result>) {
        BackgroundJob job{*this, [&work] { work(); }};
        co_await AwaitReference{job};
    } else {
        std::optional<Result> result;
        BackgroundJob job{*this, [&work, &result] { result.emplace(work()); }};
        co_await AwaitReference{job};
        co_return std::move(*result);
    }
}

} // namespace pacelet
