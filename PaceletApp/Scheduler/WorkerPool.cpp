#include "PaceletApp/Scheduler/WorkerPool.h"

#include <system_error>
#include <utility>

namespace pacelet {

WorkerPool::WorkerPool(std::size_t mostThreads)
    : mostThreads_{mostThreads} {
    threads_.emplace_back([this] { serve(); });
}

WorkerPool::~WorkerPool() {
    {
        const std::lock_guard lock{mutex_};
        ends_ = true;
    }
    workCame_.notify_all();
    for (std::thread& thread : threads_) {
        thread.join();
    }
}

void WorkerPool::start(std::function<void()> work) {
    const std::lock_guard lock{mutex_};
    queue_.push_back(std::move(work));
    if (busy_ + queue_.size() > threads_.size() && threads_.size() < mostThreads_) {
        grow();
    }
    workCame_.notify_one();
}

void WorkerPool::grow() {
    try {
        threads_.emplace_back([this] { serve(); });
    } catch (const std::system_error&) {
        // The work waits for one of the threads that there are, and asks again with the next.
        return;
    }
}

bool WorkerPool::waitForDone(Seconds limit) {
    std::unique_lock lock{mutex_};
    return workEnded_.wait_for(lock, limit, [this] { return queue_.empty() && busy_ == 0; });
}

void WorkerPool::serve() {
    std::unique_lock lock{mutex_};
    for (;;) {
        workCame_.wait(lock, [this] { return ends_ || !queue_.empty(); });
        if (queue_.empty()) {
            return;
        }
        std::function<void()> work = std::move(queue_.front());
        queue_.pop_front();
        ++busy_;
        lock.unlock();
        work();
        work = nullptr;
        lock.lock();
        --busy_;
        workEnded_.notify_all();
    }
}

} // namespace pacelet
