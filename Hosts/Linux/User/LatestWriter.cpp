#include "Hosts/Linux/User/LatestWriter.h"

#include <system_error>
#include <utility>

namespace pacelet::Linux {

LatestWriter::LatestWriter(std::function<void(const std::string&)> write)
    : write_{std::move(write)} {}

LatestWriter::~LatestWriter() {
    wait();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void LatestWriter::put(std::string contents) {
    std::unique_lock lock{mutex_};
    next_ = std::move(contents);
    if (isRunning_) {
        return;
    }
    if (thread_.joinable()) {
        thread_.join();
    }
    isRunning_ = true;
    try {
        thread_ = std::thread{[this] { run(); }};
    } catch (const std::system_error&) {
        lock.unlock();
        run();
    }
}

void LatestWriter::wait() {
    std::unique_lock lock{mutex_};
    rested_.wait(lock, [this] { return !isRunning_; });
}

void LatestWriter::run() {
    std::unique_lock lock{mutex_};
    while (next_) {
        const std::string contents = *std::exchange(next_, std::nullopt);
        lock.unlock();
        write_(contents);
        lock.lock();
    }
    isRunning_ = false;
    rested_.notify_all();
}

} // namespace pacelet::Linux
