#include "PaceletApp/Scheduler/VirtualScheduler.h"
#include "PaceletApp/Scheduler/Detach.h"
#include "PaceletApp/Scheduler/EventQueue.h"
#include "tests/Support/FakeKernel.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <optional>
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

    QCoro::Task<> sleeper(std::string name, double seconds, std::stop_token stop = {}) {
        const bool passed = co_await scheduler->sleep(Seconds{seconds}, stop);
        note(name + (passed ? " slept" : " stopped"));
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

TEST_F(VirtualSchedulerTest, AStoppedSleepEndsAtOnceButNotInsideTheStopping) {
    std::stop_source source;
    detach(sleeper("a", 30, source.get_token()));
    detach(sleeper("other", 60));
    scheduler->advance(Seconds{5});
    source.request_stop();
    EXPECT_TRUE(seen.empty());
    scheduler->settle();
    EXPECT_EQ(seen, (Seen{"5 a stopped"}));
    detach(sleeper("late", 30, source.get_token()));
    EXPECT_EQ(seen.back(), "5 late stopped");
    EXPECT_EQ(scheduler->wakeups(), 0U);
    EXPECT_EQ(scheduler->pendingSleeps(), 1U);
}

TEST_F(VirtualSchedulerTest, NothingRunsWhileTheMachineSleepsAndAllThatFellDueRunsAfterwards) {
    detach(sleeper("a", 30));
    scheduler->suspend(Seconds{100});
    EXPECT_TRUE(seen.empty());
    scheduler->settle();
    EXPECT_EQ(seen, (Seen{"100 a slept"}));
}

TEST_F(VirtualSchedulerTest, TimePassesOnWithoutWorkThatStandsStill) {
    const auto worker = [this](std::optional<Seconds> span) -> QCoro::Task<> {
        auto work = scheduler->runInBackground([this, span] {
            note("begins");
            span ? scheduler->standStill(*span) : scheduler->standStill();
            note("goes on");
        });
        co_await work;
        note("is done");
    };
    scheduler->useThreads(true);
    detach(worker(Seconds{7}));
    detach(worker({}));
    scheduler->advance(Seconds{5});
    EXPECT_EQ(seen, (Seen{"0 begins", "0 begins"}));
    scheduler->advance(Seconds{5});
    EXPECT_EQ(scheduler->pendingJobs(), 1U);
    scheduler->release();
    detach(worker({}));
    scheduler->settle();
    EXPECT_EQ(seen, (Seen{"0 begins", "0 begins", "7 goes on", "7 is done", "10 goes on",
                          "10 is done", "10 begins"}));
    scheduler.reset();
    EXPECT_EQ(seen.back(), "10 is done") << "closing waits for work";
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

MonotonicTime at(double seconds) {
    return MonotonicTime{Seconds{seconds}};
}

TEST(EventQueue, RunsWhatIsDueInOrderAndKeepsTheOrderOfArrivalOfOneMoment) {
    rc::check([] {
        const auto dues = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 6));
        const int now = *rc::gen::inRange(-1, 7);
        std::vector<std::size_t> order(dues.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::ranges::stable_sort(order, {}, [&](std::size_t index) { return dues[index]; });
        std::erase_if(order, [&](std::size_t index) { return dues[index] > now; });

        EventQueue queue;
        std::vector<std::size_t> ran;
        for (std::size_t index = 0; index < dues.size(); ++index) {
            queue.add(at(dues[index]), [&ran, index] { ran.push_back(index); });
        }
        queue.runDue(at(now));
        RC_ASSERT(ran == order);
        RC_ASSERT(queue.size() == dues.size() - ran.size());
        RC_ASSERT((!queue.nextDue() || *queue.nextDue() > at(now)));
    });
}

TEST(EventQueue, LeavesWhatIsAddedWhileItRunsToTheNextCall) {
    EventQueue queue;
    std::vector<int> ran;
    queue.add(at(2), [&] {
        ran.push_back(1);
        queue.add(at(1), [&] { ran.push_back(3); });
        queue.add(at(2), [&] { ran.push_back(4); });
    });
    queue.add(at(2), [&] { ran.push_back(2); });
    queue.runDue(at(2));
    EXPECT_EQ(ran, (std::vector{1, 2}));
    queue.runDue(at(2));
    EXPECT_EQ(ran, (std::vector{1, 2, 3, 4}));
}

TEST(EventQueue, AMovedEventGoesBehindWhatIsDueThen) {
    EventQueue queue;
    std::vector<int> ran;
    const EventQueue::Ticket late = queue.add(at(30), [&] { ran.push_back(30); });
    queue.add(at(1), [&] { ran.push_back(1); });
    queue.move(late, at(1));
    queue.runDue(at(1));
    EXPECT_EQ(ran, (std::vector{1, 30}));
    EXPECT_EQ(queue.size(), 0U);
}

} // namespace
} // namespace pacelet
