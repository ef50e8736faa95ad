#pragma once

#include "Core/Platform/NetworkLink.h"
#include "Core/Support/Descriptor.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace pacelet::Linux {

/// Who hears of the path; shared by its monitor and the thread that tells it.
struct PathListener {
    std::function<void(NetworkPath)> update;
    std::atomic<bool> isCancelled{false};
    std::recursive_mutex telling{}; ///< held while `update` runs, which may let go of its monitor
    std::optional<NetworkPath> told{};
};

/// Follows the kernel's routes and interfaces on one thread for all who listen. It rests while
/// nothing changes, and ends when nobody has listened for some seconds, so that a reading each
/// second costs neither a thread nor a question to the kernel. Safe from any thread.
class PathFollower {
public:
    explicit PathFollower(std::string sysFolder);
    PathFollower(const PathFollower&) = delete;
    PathFollower& operator=(const PathFollower&) = delete;
    ~PathFollower() { stop(); }

    /// Tells the listener the present path, and then every change of it until it is cancelled. The
    /// kernel keeps 15 bytes of the label. Where the system gives no thread, the listener hears of
    /// the present path at once, and of no change.
    void add(const std::string& queueLabel, std::shared_ptr<PathListener> listener);

    /// To be called when a listener was cancelled.
    void wake();

    /// Ends the thread, and waits for an update that is under way. Not from within one.
    void stop();

private:
    using Listeners = std::vector<std::shared_ptr<PathListener>>;

    void follow();
    Listeners listeners();
    bool isDone(bool nobodyCame);

    std::string sysFolder_;
    Descriptor wake_;
    std::mutex mutex_;
    Listeners listeners_;    // under the mutex, as what follows
    bool isRunning_ = false; // the thread will look at the listeners again
    bool isStopped_ = false;
    std::thread thread_;
};

} // namespace pacelet::Linux
