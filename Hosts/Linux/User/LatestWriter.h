#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace pacelet::Linux {

/// Has contents written on a thread of its own, which lives no longer than there is something to
/// write. Where the system gives no thread, whoever hands them over writes them.
class LatestWriter {
public:
    /// `write` is called once at a time.
    explicit LatestWriter(std::function<void(const std::string& contents)> write);
    LatestWriter(const LatestWriter&) = delete;
    LatestWriter& operator=(const LatestWriter&) = delete;

    /// Waits for what is still to be written.
    ~LatestWriter();

    /// Takes the place of contents that nobody has begun to write. One thread.
    void put(std::string contents);

    /// Waits until all has been written.
    void wait();

private:
    void run();

    std::function<void(const std::string&)> write_;
    std::mutex mutex_;
    std::condition_variable rested_;
    std::optional<std::string> next_;
    bool isRunning_ = false;
    std::thread thread_;
};

} // namespace pacelet::Linux
