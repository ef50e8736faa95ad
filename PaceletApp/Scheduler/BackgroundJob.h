#pragma once

#include <atomic>
#include <coroutine>
#include <exception>
#include <functional>

namespace pacelet {

class Scheduler;

/// One piece of blocking work that a coroutine of the UI thread waits for. It lives in the
/// coroutine's frame, so that nothing is copied on the way to the pool and back.
class BackgroundJob final {
public:
    BackgroundJob(Scheduler& scheduler, std::function<void()> work);
    BackgroundJob(const BackgroundJob&) = delete;
    BackgroundJob& operator=(const BackgroundJob&) = delete;

    /// What a coroutine awaits: suspends until the work is done, then throws what it threw.
    bool await_ready() const;
    void await_suspend(std::coroutine_handle<> waiting);
    void await_resume() const;

    /// Does the work, on whatever thread calls.
    void run();

    /// Goes on with the coroutine, on the UI thread. The job may be gone afterwards.
    void finish() { waiting_.resume(); }

private:
    Scheduler& scheduler_;
    std::function<void()> work_;
    std::coroutine_handle<> waiting_;
    std::exception_ptr error_;
    /// Hands the frame to the pool's thread and back.
    std::atomic<bool> handedOver_ = false;
    std::atomic<bool> done_ = false;
};

} // namespace pacelet
