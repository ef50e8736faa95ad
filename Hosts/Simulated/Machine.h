#pragma once

#include "Core/Platform/Clock.h"
#include "Hosts/Simulated/FolderTree.h"
#include "Hosts/Simulated/Model/World.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace pacelet::Simulated {

/// The simulated Mac as one object: its state behind one mutex, and its clocks, which stand still
/// until `advance` moves them. Safe from any thread.
class Machine : public Clock {
public:
    /// The state, for as long as this lives. Never hold one while calling the machine again.
    class Locked {
    public:
        World* operator->() const { return world_; }
        World& operator*() const { return *world_; }

    private:
        friend class Machine;
        Locked(std::mutex& mutex, World& world)
            : lock_{mutex},
              world_{&world} {}

        std::unique_lock<std::mutex> lock_;
        World* world_;
    };

    explicit Machine(World world)
        : world_{std::move(world)} {}

    TimePoint now() override;
    MonotonicTime monotonicNow() override;

    Locked lock();

    /// Lets virtual time pass.
    void advance(Seconds span);

    /// Sets the wall clock forwards or backwards; nothing else notices.
    void jumpWallClock(Seconds by);

    /// From now on virtual time passes with the real one, besides what `advance` adds.
    void followRealTime();

    void inject(Failure failure);

    /// Ends all failures; calls that hang go on.
    void clearFailures();

    /// Waits until no hang of this tool is in force any more.
    void waitWhileHanging(const std::string& tool);

    /// From now on who waits for a hang to end calls this, once, in place of holding its thread.
    void setStandStill(std::function<void()> standStill) { standStill_ = std::move(standStill); }

private:
    void catchUp();

    std::mutex mutex_;
    std::condition_variable released_;
    World world_;
    std::optional<std::chrono::steady_clock::time_point> followedUntil_;
    std::vector<BlockedFolder> blocked_;
    std::function<void()> standStill_;
};

} // namespace pacelet::Simulated
