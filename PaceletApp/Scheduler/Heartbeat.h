#pragma once

#include "PaceletApp/Scheduler/Scheduler.h"
#include "PaceletApp/Scheduler/StopOwner.h"

#include <functional>
#include <optional>

namespace pacelet {

/// Calls `beat` again and again while it is active. At rest nothing of it wakes up.
class Heartbeat {
public:
    /// `pause` tells before each beat how long to wait for it.
    Heartbeat(Scheduler& scheduler, std::function<Seconds()> pause, std::function<void()> beat);

    bool isActive() const { return running_.has_value(); }

    /// A start waits anew; neither start nor stop calls `beat`.
    void setActive(bool active);

private:
    Scheduler& scheduler_;
    std::function<Seconds()> pause_;
    std::function<void()> beat_;
    std::optional<StopOwner> running_;
};

} // namespace pacelet
