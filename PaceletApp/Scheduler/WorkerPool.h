#pragma once

#include "Core/Support/Time.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace pacelet {

/// Threads that do blocking work. There is always one, so that no work is ever refused; more come
/// when they are needed and the system gives them, and then stay.
class WorkerPool {
public:
    /// Throws `std::system_error` where the system gives no thread.
    explicit WorkerPool(std::size_t mostThreads);
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    /// Waits for all work.
    ~WorkerPool();

    /// Has `work` done, which throws nothing, in its turn. Any thread.
    void start(std::function<void()> work);

    /// Waits at most `limit` until nothing is under way, and tells whether that is so.
    bool waitForDone(Seconds limit);

private:
    void serve();
    void grow();

    std::mutex mutex_;
    std::condition_variable workCame_;
    std::condition_variable workEnded_;
    std::deque<std::function<void()>> queue_;
    std::size_t busy_ = 0;
    bool ends_ = false;
    std::size_t mostThreads_;
    std::vector<std::thread> threads_;
};

} // namespace pacelet
