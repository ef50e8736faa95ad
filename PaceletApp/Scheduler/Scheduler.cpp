#include "PaceletApp/Scheduler/Scheduler.h"

#include <algorithm>

namespace pacelet {

BackgroundJob::BackgroundJob(Scheduler& scheduler, std::function<void()> work)
    : scheduler_{scheduler}, work_{std::move(work)} {
    setAutoDelete(false);
}

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
    Sleep(Scheduler& scheduler, Seconds duration, const CancellationToken& token)
        : scheduler_{scheduler}, duration_{duration}, token_{token} {}

    bool await_ready() const {
        if (scheduler_.closed_) {
            throw SchedulerClosed{};
        }
        return token_.isCancelled();
    }

    void await_suspend(std::coroutine_handle<> waiting) {
        ++scheduler_.pendingSleeps_;
        ticket_ = scheduler_.events_.add(scheduler_.monotonicNow() + duration_, [this, waiting] {
            ended_ = true;
            --scheduler_.pendingSleeps_;
            waiting.resume();
        });
        cancelled_.emplace(token_, [this] { wakeNow(); });
        scheduler_.arm();
    }

    bool await_resume() {
        if (scheduler_.closed_) {
            throw SchedulerClosed{};
        }
        return !token_.isCancelled();
    }

private:
    void wakeNow() {
        if (!ended_) {
            ticket_ = scheduler_.events_.move(ticket_, scheduler_.monotonicNow());
            scheduler_.arm();
        }
    }

    Scheduler& scheduler_;
    Seconds duration_;
    const CancellationToken& token_;
    EventQueue::Ticket ticket_;
    std::optional<CancellationHandler> cancelled_;
    bool ended_ = false;
};

Scheduler::~Scheduler() = default;

QCoro::Task<bool> Scheduler::sleep(Seconds duration, CancellationToken token) {
    Sleep sleep{*this, std::max(duration, Seconds{0}), token};
    const bool passed = co_await AwaitReference{sleep};
    if (passed) {
        ++wakeups_;
    }
    co_return passed;
}

QCoro::Task<bool> Scheduler::nextTurn(CancellationToken token) {
    Sleep turn{*this, Seconds{0}, token};
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
