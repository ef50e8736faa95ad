#include "PaceletApp/Scheduler/VirtualScheduler.h"

#include "PaceletApp/Scheduler/Detach.h"
#include "tests/Support/FakeKernel.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace pacelet {
namespace {

using testing::FakeClock;

/// Tasks write what they see into `seen`, with the second at which they saw it.
class VirtualSchedulerTest : public ::testing::Test {
protected:
    void note(const std::string& what) {
        seen.push_back(
            std::to_string(static_cast<int>(clock.monotonic.time_since_epoch().count())) + " " +
            what);
    }

    QCoro::Task<> sleeper(std::string name, double seconds, CancellationToken token = {}) {
        const bool passed = co_await scheduler->sleep(Seconds{seconds}, token);
        note(name + (passed ? " slept" : " cancelled"));
    }

    FakeClock clock;
    std::unique_ptr<VirtualScheduler> scheduler =
        std::make_unique<VirtualScheduler>(clock, [this](Seconds span) {
            clock.wall += span;
            clock.monotonic += span;
        });
    std::vector<std::string> seen;
};

using Seen = std::vector<std::string>;

TEST_F(VirtualSchedulerTest, WakesEachSleeperAtItsOwnMoment) {
    detach(sleeper("long", 30));
    detach(sleeper("short", 3));
    detach(sleeper("backwards", -5));
    scheduler->advance(Seconds{2.5});
    EXPECT_EQ(seen, (Seen{"0 backwards slept"}));
    scheduler->advance(Seconds{100});
    EXPECT_EQ(seen, (Seen{"0 backwards slept", "3 short slept", "30 long slept"}));
    EXPECT_EQ(scheduler->monotonicNow(), MonotonicTime{Seconds{102.5}});
    EXPECT_EQ(scheduler->wakeups(), 3U);
    EXPECT_EQ(scheduler->pendingSleeps(), 0U);
}

TEST_F(VirtualSchedulerTest, ACancelledSleepEndsAtOnceButNotInsideTheCancelling) {
    CancellationSource source;
    detach(sleeper("a", 30, source.token()));
    detach(sleeper("b", 60, source.token()));
    scheduler->advance(Seconds{5});
    source.cancel();
    EXPECT_TRUE(seen.empty());
    scheduler->settle();
    EXPECT_EQ(seen, (Seen{"5 a cancelled", "5 b cancelled"}));
    detach(sleeper("late", 30, source.token()));
    EXPECT_EQ(seen.back(), "5 late cancelled");
    EXPECT_EQ(scheduler->wakeups(), 0U);
    EXPECT_EQ(scheduler->pendingSleeps(), 0U);
}

TEST_F(VirtualSchedulerTest, NothingRunsWhileTheMachineSleepsAndAllThatFellDueRunsAfterwards) {
    detach(sleeper("a", 30));
    scheduler->suspend(Seconds{100});
    EXPECT_TRUE(seen.empty());
    scheduler->settle();
    EXPECT_EQ(seen, (Seen{"100 a slept"}));
}

TEST_F(VirtualSchedulerTest, ClosingUnwindsAllThatWaits) {
    auto held = std::make_shared<int>(1);
    auto holder = [](Scheduler& waits, std::shared_ptr<int> kept, bool works) -> QCoro::Task<> {
        if (works) {
            auto work = waits.runInBackground([kept] {});
            co_await work;
        }
        while (kept) {
            co_await waits.sleep(Seconds{3});
        }
    };
    detach(holder(*scheduler, held, true));
    detach(holder(*scheduler, held, false));
    EXPECT_GT(held.use_count(), 1);
    scheduler.reset();
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(VirtualSchedulerTest, AnExceptionThatNobodyCatchesStopsTheProgram) {
    auto failing = [this]() -> QCoro::Task<> {
        co_await scheduler->sleep(Seconds{1});
        throw std::runtime_error{"lost"};
    };
    EXPECT_DEATH(
        {
            detach(failing());
            scheduler->advance(Seconds{1});
        },
        "a task of the UI thread failed: lost");
}

} // namespace
} // namespace pacelet
