#include "Hosts/Simulated/Machine.h"

#include <utility>

namespace pacelet::Simulated {

TimePoint Machine::now() {
    return lock()->time.wall;
}

MonotonicTime Machine::monotonicNow() {
    return lock()->time.monotonic;
}

Machine::Locked Machine::lock() {
    Locked locked{mutex_, world_};
    catchUp();
    return locked;
}

void Machine::catchUp() {
    if (followedUntil_) {
        const auto realNow = std::chrono::steady_clock::now();
        passTime(world_, realNow - std::exchange(*followedUntil_, realNow));
    }
}

void Machine::advance(Seconds span) {
    passTime(*lock(), span);
}

void Machine::jumpWallClock(Seconds by) {
    const Locked locked = lock();
    locked->time.wall += by;
    // The kernel keeps its uptime and moves the moment of the boot.
    locked->vitals.bootTime += by;
}

void Machine::followRealTime() {
    const Locked locked = lock();
    followedUntil_ = std::chrono::steady_clock::now();
}

void Machine::inject(Failure failure) {
    const Locked locked = lock();
    if (const auto* folder = std::get_if<FolderUnwritable>(&failure)) {
        blocked_.emplace_back(folder->path);
    }
    locked->failures.add(std::move(failure));
}

void Machine::clearFailures() {
    {
        const Locked locked = lock();
        locked->failures.clear();
        blocked_.clear();
    }
    released_.notify_all();
}

void Machine::waitWhileHanging(const std::string& tool) {
    Locked locked = lock();
    if (locked->failures.ofTool<ToolHangs>(tool) == nullptr) {
        return;
    }
    ++locked->records.hungCalls;
    if (standStill_) {
        locked.lock_.unlock();
        standStill_();
        locked.lock_.lock();
    } else {
        released_.wait(locked.lock_,
                       [&] { return world_.failures.ofTool<ToolHangs>(tool) == nullptr; });
    }
    --locked->records.hungCalls;
}

} // namespace pacelet::Simulated
