#pragma once

#include <atomic>

namespace pacelet::Linux {

/// How a request to restart the machine ended.
enum class RestartEnd {
    begun,      ///< the machine restarts, or somebody asks the user about it
    cancelled,  ///< the user thought better of it
    forbidden,  ///< this user may not restart the machine
    impossible, ///< nobody is there who could
};

/// Restarting the machine by way of the desktop's session manager or, where a session has none that
/// we know, the login manager. For background threads.
class SessionRestart {
public:
    /// Whether there is anybody to turn to; reads files alone.
    static bool isPossible();

    /// True where the session manager asks the user before it restarts the machine; false where the
    /// request is as good as done.
    static bool asksFirst();

    /// Asks for it. Waits while somebody asks the user, for some minutes at most.
    RestartEnd run() const;

    /// Has whoever waits wait no longer. Any thread.
    void stop() { isStopped_ = true; }

private:
    std::atomic<bool> isStopped_{false};
};

} // namespace pacelet::Linux
