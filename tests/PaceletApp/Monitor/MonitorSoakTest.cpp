#include "tests/PaceletApp/Monitor/MonitorRig.h"

#include <cmath>
#include <malloc.h>
#include <map>
#include <random>

namespace pacelet::testing {
namespace {

using namespace Simulated;

/// What the history must hold, folded anew from what the screens were shown.
class HistoryModel {
public:
    /// A tick of which the monitor keeps record. True when it finishes a minute.
    bool add(const CPUPoint& point, const SystemSignals& signals, const MemoryBreakdown& memory) {
        const auto minute = static_cast<std::int64_t>(std::floor(unixTime(point.date) / 60));
        const bool finished = !loads_.empty() && open_.t != minute;
        if (finished) {
            finish();
        }
        open_.t = minute;
        open_.swap = signals.swapUsedBytes;
        open_.memUsed = memory.used();
        open_.pressure = std::max(open_.pressure, static_cast<std::int64_t>(signals.pressure));
        loads_.push_back(point.load);
        return finished;
    }

    /// The program ends; the open minute is lost.
    void restart() {
        open_ = {};
        loads_.clear();
    }

    /// The minute that was just finished could not be written.
    void loseLast() { finished_.pop_back(); }

    /// As they are loaded: by minute, those of one minute in the order in which they closed.
    std::vector<MinuteRecord> sorted() const {
        std::vector<MinuteRecord> records = finished_;
        std::ranges::stable_sort(records, {}, &MinuteRecord::t);
        return records;
    }

private:
    void finish() {
        double sum = 0;
        for (const double load : loads_) {
            sum += load;
        }
        open_.n = static_cast<std::int64_t>(loads_.size());
        open_.cpu = sum / static_cast<double>(open_.n);
        open_.cpuMax = *std::ranges::max_element(loads_);
        finished_.push_back(open_);
        restart();
    }

    MinuteRecord open_;
    std::vector<double> loads_;
    std::vector<MinuteRecord> finished_;
};

/// Thirty days of a machine on which everything happens at random, always the same for one seed.
class MonitorSoak : public MonitorRig, public ::testing::WithParamInterface<std::uint64_t> {
protected:
    static constexpr Seconds sampling{0.5};

    int below(int count) { return std::uniform_int_distribution<int>{0, count - 1}(random_); }
    double between(double low, double high) {
        return std::uniform_real_distribution<double>{low, high}(random_);
    }

    void launchProgram() {
        make();
        model_.restart();
        QObject::connect(monitor.get(), &Monitor::changed, monitor.get(),
                         [this](const Fields& fields) {
                             if (fields.hold(monitor->cpuHistory)) {
                                 tickEnded();
                             }
                         });
        monitor->start();
    }

    void tickEnded() {
        ++ticks_;
        if (monitor->keepHistory() &&
            model_.add(monitor->cpuHistory().back(), *monitor->signals(), *monitor->memory()) &&
            diskFails_) {
            model_.loseLast();
            ++lost_;
        }
        for (const CPUPoint& point : monitor->cpuHistory()) {
            EXPECT_LE(scheduler.now() - point.date, Seconds{600});
        }
    }

    /// Called as any tool ends: two listings of the processes are never under way together.
    void toolEnded() {
        if (samples() == lastSamples_) {
            return;
        }
        lastSamples_ = samples();
        const MonotonicTime now = scheduler.monotonicNow();
        EXPECT_GE(now - lastSampled_, sampling - Seconds{1e-6});
        EXPECT_FALSE(soundAsleep_);
        lastSampled_ = now;
    }

    void changeMachine() {
        const auto world = mac.machine.lock();
        const Seconds awake = world->time.awake;
        for (Process& process : world->processes.all()) {
            process.setLoad({.percent = between(0, below(4) == 0 ? 300 : 20)}, awake);
        }
        world->vitals.pressureLevel = std::array{1, 1, 2, 4}[static_cast<std::size_t>(below(4))];
        world->vitals.swapUsed = below(8) * gibibyte;
        world->vitals.thermalState = below(4);
        world->vitals.lowPower = below(4) == 0;
        if (world->running.empty()) {
            launch(*world, world->installed.front());
        } else if (below(3) == 0) {
            endApplication(*world, world->running.front().number);
        }
    }

    void finishWork() {
        while (scheduler.pendingJobs() > 0) {
            scheduler.advance(sampling / 2);
        }
    }

    void changeFailures() {
        finishWork(); // what is being written is on the disk, or lost, by then
        diskFails_ = false;
        mac.machine.clearFailures();
        const auto which = static_cast<std::size_t>(below(6));
        const Failure failures[] = {ToolMissing{"/bin/ps"}, ToolFails{"/bin/ps", 1, {}},
                                    ToolPrints{"/bin/ps", "\xff rubbish\n"},
                                    FolderUnwritable{monitor->usageStore().directory}};
        if (which < std::size(failures)) {
            mac.machine.inject(failures[which]);
            diskFails_ = which == 3;
        }
    }

    void sleepForAWhile() {
        mac.workspace.sleep();
        scheduler.advance(Seconds{1});
        soundAsleep_ = true;
        scheduler.advance(Seconds{between(1, below(3) == 0 ? 36000 : 1800)});
        soundAsleep_ = false;
        mac.workspace.wake();
    }

    void act() {
        switch (below(12)) {
        case 0:
            return sleepForAWhile();
        case 1:
            return changeFailures();
        case 2:
            return mac.machine.jumpWallClock(Seconds{between(-7200, 7200)});
        case 3:
            return monitor->setKeepHistory(below(4) != 0);
        case 4:
            return monitor->isPaused() || below(5) == 0 ? monitor->togglePause() : void();
        case 5:
            return monitor->checkNow();
        case 6:
            return monitor->setMenuOpen(below(6) == 0);
        case 7:
            return monitor->setWindowVisible(below(3) == 0);
        case 8:
            return detach(monitor->refreshBackgroundItems(true));
        case 9:
            return monitor->setStuckApp("Notes");
        case 10:
            finishWork();
            return below(8) == 0 ? launchProgram() : monitor->start();
        default:
            return changeMachine();
        }
    }

    void checkBounds() {
        EXPECT_LE(scheduler.pendingSleeps(), 3U);
        EXPECT_LE(scheduler.pendingJobs(), 5U);
        EXPECT_LE(monitor->groups().size(), 4U);
        EXPECT_LE(monitor->explanations().size(), 4U);
        EXPECT_LE(monitor->backgroundItems().size(), 1U);
        // Points of a time that the clock was set back from stay until it comes again.
        EXPECT_LE(monitor->cpuHistory().size(), 2000U);
    }

    bool isLookedAt() const { return monitor->windowVisible() || monitor->menuOpen(); }

    std::mt19937_64 random_{GetParam()};
    HistoryModel model_;
    std::int64_t ticks_ = 0;
    std::int64_t lost_ = 0;
    std::int64_t lastSamples_ = 0;
    MonotonicTime lastSampled_{};
    bool diskFails_ = false;
    bool soundAsleep_ = false;
};

TEST_P(MonitorSoak, ThirtyDaysLeaveJustTheirHistoryBehind) {
    scheduler.setBackgroundDuration(sampling);
    mac.tools.setTiming([this](Seconds) { toolEnded(); });
    launchProgram();
    const MonotonicTime begin = scheduler.monotonicNow();
    constexpr double day = 86400;
    std::size_t heapAfterAWeek = 0;
    while (scheduler.monotonicNow() - begin < Seconds{30 * day}) {
        act();
        scheduler.advance(Seconds{between(0, isLookedAt() ? 400 : 2000)});
        checkBounds();
        if (heapAfterAWeek == 0 && scheduler.monotonicNow() - begin > Seconds{7 * day}) {
            heapAfterAWeek = mallinfo2().uordblks;
        }
    }
    const std::size_t heap = mallinfo2().uordblks;
    finishWork();
    const std::vector<MinuteRecord> expected = model_.sorted();
    const std::vector<MinuteRecord> kept = monitor->usageStore().load(fromUnixTime(0));
    EXPECT_TRUE(kept == expected) << kept.size() << " records instead of " << expected.size();
    EXPECT_GT(kept.size(), 5'000U);
    EXPECT_GT(ticks_, 30'000);
    EXPECT_GT(lost_, 10);
    // The model itself grows by its records.
    EXPECT_LT(heap, heapAfterAWeek + expected.size() * 2 * sizeof(MinuteRecord) + (1 << 20));
    monitor.reset();
    scheduler.advance(Seconds{2});
    EXPECT_EQ(scheduler.pendingSleeps(), 0U);
    EXPECT_EQ(scheduler.pendingJobs(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, MonitorSoak, ::testing::Values(1, 20260306, 77));

} // namespace
} // namespace pacelet::testing
