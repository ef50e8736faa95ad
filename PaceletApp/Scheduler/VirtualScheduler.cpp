#include "PaceletApp/Scheduler/VirtualScheduler.h"

#include "Core/Support/Precondition.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace pacelet {

namespace {

/// Two sums of the same durations may differ in their last digits.
constexpr Seconds rounding{1e-6};

} // namespace

/// A piece of work on a thread of its own, which takes turns with the scheduler's.
class VirtualScheduler::Strand {
public:
    explicit Strand(BackgroundJob& job)
        : job_{job},
          thread_{[this] {
              current = this;
              waitFor(Turn::work);
              job_.run();
              hasEnded_ = true;
              pass(Turn::scheduler);
          }} {}
    Strand(const Strand&) = delete;
    Strand& operator=(const Strand&) = delete;
    ~Strand() { thread_.join(); }

    /// Lets the work go on until it ends or stands still.
    void run() {
        due_.reset();
        pass(Turn::work);
        waitFor(Turn::scheduler);
    }

    bool hasEnded() const { return hasEnded_; }
    /// When it wants to go on; nothing means when it is released.
    std::optional<MonotonicTime> due() const { return due_; }
    BackgroundJob& job() { return job_; }

    /// Of its own thread.
    void pauseUntil(std::optional<MonotonicTime> due) {
        due_ = due;
        pass(Turn::scheduler);
        waitFor(Turn::work);
    }

    static thread_local Strand* current;

private:
    enum class Turn { scheduler, work };

    void pass(Turn turn) {
        const std::lock_guard lock{mutex_};
        turn_ = turn;
        passed_.notify_all();
    }
    void waitFor(Turn turn) {
        std::unique_lock lock{mutex_};
        passed_.wait(lock, [&] { return turn_ == turn; });
    }

    BackgroundJob& job_;
    std::mutex mutex_;
    std::condition_variable passed_;
    Turn turn_ = Turn::scheduler;
    std::optional<MonotonicTime> due_;
    bool hasEnded_ = false;
    std::thread thread_; // the last member: it uses the others
};

thread_local VirtualScheduler::Strand* VirtualScheduler::Strand::current = nullptr;

VirtualScheduler::VirtualScheduler(Clock& clock, ClockMover moveClock)
    : Scheduler{clock},
      moveClock_{std::move(moveClock)} {}

VirtualScheduler::~VirtualScheduler() {
    release();
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
        if (usesThreads_ && !isClosed()) {
            goOn(std::make_shared<Strand>(job));
            return;
        }
        --pendingJobs_;
        if (!isClosed()) {
            job.run();
        }
        job.finish();
    });
}

void VirtualScheduler::goOn(const std::shared_ptr<Strand>& strand) {
    strand->run();
    if (strand->hasEnded()) {
        --pendingJobs_;
        strand->job().finish();
    } else if (const auto due = strand->due()) {
        events().add(*due, [this, strand] { goOn(strand); });
    } else {
        standing_.push_back(strand);
    }
}

void VirtualScheduler::standStill() {
    precondition(Strand::current != nullptr, "work without a thread of its own stands still");
    if (!isClosed()) {
        Strand::current->pauseUntil(std::nullopt);
    }
}

void VirtualScheduler::standStill(Seconds duration) {
    if (Strand::current != nullptr && !isClosed()) {
        Strand::current->pauseUntil(monotonicNow() + duration);
    }
}

void VirtualScheduler::release() {
    for (auto& strand : std::exchange(standing_, {})) {
        events().add(monotonicNow(), [this, strand = std::move(strand)] { goOn(strand); });
    }
}

} // namespace pacelet
