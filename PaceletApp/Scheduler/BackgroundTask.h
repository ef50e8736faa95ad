#pragma once

#include <QCoroTask>

#include <utility>

namespace pacelet {

/// Work that is under way in the background. It is awaited under a name:
///
///     auto reading = scheduler.runInBackground([path] { return read(path); });
///     const std::string text = co_await reading;
///
/// Awaiting it in the expression that starts it does not compile, for good reason: GCC 12 copies
/// the lambdas of such an expression bit by bit, and destroys what they captured twice.
template<typename T>
class [[nodiscard]] BackgroundTask {
public:
    explicit BackgroundTask(QCoro::Task<T> task)
        : task_{std::move(task)} {}

    auto operator co_await() & { return task_.operator co_await(); }
    void operator co_await() && = delete;

    /// For whoever takes a task of any kind.
    operator QCoro::Task<T>() && { return std::move(task_); } // NOLINT(*-explicit-*)

private:
    QCoro::Task<T> task_;
};

} // namespace pacelet
