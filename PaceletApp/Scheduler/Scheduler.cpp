#include "PaceletApp/Scheduler/Scheduler.h"

#include <algorithm>

namespace pacelet {

BackgroundJob::BackgroundJob(Scheduler& scheduler, std::function<void()> work)
    : scheduler_{scheduler},
      work_{std::move(work)} {}

bool BackgroundJob::await_ready() const {
    if (scheduler_.closed_) {
        throw SchedulerClosed{};
    }
    return false;
}

void BackgroundJob::await_suspend(std::coroutine_handle<> waiting) {
    waiting_ = waiting;
    handedOver_.store(true, std::memory_order_release);
    scheduler_.start(*this);
}

void BackgroundJob::await_resume() const {
    if (!done_.load(std::memory_order_acquire)) {
        throw SchedulerClosed{};
    }
    if (error_) {
        std::rethrow_exception(error_);
    }
}

void BackgroundJob::run() {
    if (!handedOver_.load(std::memory_order_acquire)) {
        return;
    }
    try {
        work_();
    } catch (...) {
        // Not handled here: carried to the task that waits for the work.
        error_ = std::current_exception();
    }
    done_.store(true, std::memory_order_release);
    scheduler_.jobDone(*this);
}

/// One wait for time to pass, as a coroutine awaits it.
class Scheduler::Sleep {
public:
    Sleep(Scheduler& scheduler, Seconds duration, const std::stop_token& stop)
        : scheduler_{scheduler},
          duration_{duration},
          stop_{stop} {}

    bool await_ready() const {
        if (scheduler_.closed_) {
            throw SchedulerClosed{};
        }
        return stop_.stop_requested();
    }

    void await_suspend(std::coroutine_handle<> waiting) {
        ++scheduler_.pendingSleeps_;
        ticket_ = scheduler_.events_.add(scheduler_.monotonicNow() + duration_, [this, waiting] {
            ended_ = true;
            --scheduler_.pendingSleeps_;
            waiting.resume();
        });
        stopped_.emplace(stop_, WakeNow{*this});
        scheduler_.arm();
    }

    bool await_resume() {
        if (scheduler_.closed_) {
            throw SchedulerClosed{};
        }
        return !stop_.stop_requested();
    }

private:
    struct WakeNow {
        Sleep& sleep;
        void operator()() const { sleep.wakeNow(); }
    };

    void wakeNow() {
        if (!ended_) {
            ticket_ = scheduler_.events_.move(ticket_, scheduler_.monotonicNow());
            scheduler_.arm();
        }
    }

    Scheduler& scheduler_;
    Seconds duration_;
    const std::stop_token& stop_;
    EventQueue::Ticket ticket_;
    std::optional<std::stop_callback<WakeNow>> stopped_;
    bool ended_ = false;
};

Scheduler::~Scheduler() = default;

QCoro::Task<bool> Scheduler::sleep(Seconds duration, std::stop_token stop) {
    Sleep sleep{*this, std::max(duration, Seconds{0}), stop};
    const bool passed = co_await AwaitReference{sleep};
    if (passed) {
        ++wakeups_;
    }
    co_return passed;
}

QCoro::Task<bool> Scheduler::nextTurn(std::stop_token stop) {
    Sleep turn{*this, Seconds{0}, stop};
    const bool wanted = co_await AwaitReference{turn};
    co_return wanted;
}

void Scheduler::close() {
    closed_ = true;
    while (events_.size() > 0) {
        events_.takeFirst()();
    }
}

} // namespace pacelet
