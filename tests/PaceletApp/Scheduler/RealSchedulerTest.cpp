#include "PaceletApp/Scheduler/RealScheduler.h"

#include "PaceletApp/Scheduler/Detach.h"
#include "PaceletApp/Scheduler/StopOwner.h"
#include "tests/Support/FakeKernel.h"
#include "tests/Support/NoThreads.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <vector>

namespace pacelet {
namespace {

class RealSchedulerTest : public ::testing::Test {
protected:
    /// Lets the event loop turn until `done`, or for ten seconds at most.
    template<typename Condition>
    static bool turnUntil(Condition&& done) {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds{10};
        while (!done() && std::chrono::steady_clock::now() < limit) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
        }
        return done();
    }

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    testing::FakeClock clock;
    std::unique_ptr<RealScheduler> scheduler = std::make_unique<RealScheduler>(clock);
};

TEST_F(RealSchedulerTest, NoSleepEndsEarlyAndAllEndInOrder) {
    std::vector<int> ended;
    bool early = false;
    auto sleeper = [&](int milliseconds) -> QCoro::Task<> {
        const MonotonicTime due = scheduler->monotonicNow() + Seconds{milliseconds / 1000.0};
        co_await scheduler->sleep(Seconds{milliseconds / 1000.0});
        early = early || scheduler->monotonicNow() < due;
        ended.push_back(milliseconds);
    };
    const std::vector<int> times{40, 5, 0, 21, 20};
    for (const int milliseconds : times) {
        detach(sleeper(milliseconds));
    }
    ASSERT_TRUE(turnUntil([&] { return ended.size() == times.size(); }));
    EXPECT_TRUE(std::ranges::is_sorted(ended));
    EXPECT_FALSE(early);
}

TEST_F(RealSchedulerTest, AStoppedSleepEndsLongBeforeItsTime) {
    auto source = std::make_unique<StopOwner>();
    std::optional<bool> passed;
    auto sleeper = [&]() -> QCoro::Task<> {
        passed = co_await scheduler->sleep(Seconds{3600}, source->token());
    };
    detach(sleeper());
    source.reset();
    EXPECT_FALSE(passed);
    ASSERT_TRUE(turnUntil([&] { return passed.has_value(); }));
    EXPECT_FALSE(*passed);
}

TEST_F(RealSchedulerTest, WorkRunsElsewhereAndItsOutcomeComesBackToThisThread) {
    constexpr int jobs = 200;
    const QThread* const here = QThread::currentThread();
    int finished = 0;
    int failed = 0;
    long total = 0;
    bool strayed = false;
    auto worker = [&](int number) -> QCoro::Task<> {
        std::vector<long> input(100, number);
        auto work = scheduler->runInBackground([input = std::move(input), here, number] {
            if (QThread::currentThread() == here) {
                throw std::logic_error{"ran on the UI thread"};
            }
            if (number % 10 == 0) {
                throw std::runtime_error{"tenth"};
            }
            std::vector<long> sums(input.size());
            std::partial_sum(input.begin(), input.end(), sums.begin());
            return sums;
        });
        try {
            const std::vector<long> output = co_await work;
            total += output.back();
        } catch (const std::runtime_error&) {
            ++failed;
        }
        strayed = strayed || QThread::currentThread() != here;
        ++finished;
    };
    for (int number = 0; number < jobs; ++number) {
        detach(worker(number));
    }
    ASSERT_TRUE(turnUntil([&] { return finished == jobs; }));
    EXPECT_EQ(failed, 20);
    EXPECT_EQ(total, 100 * (199 * 200 / 2 - 10 * (19 * 20 / 2)));
    EXPECT_FALSE(strayed);
}

TEST_F(RealSchedulerTest, NoWorkIsLostWhereTheSystemGivesNoMoreThreads) {
    const testing::NoThreads noThreads;
    int finished = 0;
    auto worker = [&]() -> QCoro::Task<> {
        auto work = scheduler->runInBackground([] {});
        co_await work;
        ++finished;
    };
    for (int job = 0; job < 5; ++job) {
        detach(worker());
    }
    EXPECT_TRUE(turnUntil([&] { return finished == 5; }));
    EXPECT_THROW(RealScheduler{clock}, std::system_error);
}

TEST_F(RealSchedulerTest, WaitsForWorkUpToALimitAndUnwindsTheRestWhenItGoes) {
    std::atomic<bool> release = false;
    auto held = std::make_shared<int>(1);
    auto worker = [](Scheduler& waits, std::atomic<bool>& gate,
                     std::shared_ptr<int> kept) -> QCoro::Task<> {
        auto work = waits.runInBackground([&gate] {
            while (!gate) {
                std::this_thread::sleep_for(std::chrono::milliseconds{1});
            }
        });
        co_await work;
        co_await waits.sleep(Seconds{static_cast<double>(*kept) * 3600});
    };
    auto sleeper = [](Scheduler& waits, std::shared_ptr<int> kept) -> QCoro::Task<> {
        co_await waits.sleep(Seconds{static_cast<double>(*kept) * 3600});
    };
    detach(worker(*scheduler, release, held));
    detach(sleeper(*scheduler, held));
    EXPECT_FALSE(scheduler->waitForBackground(Seconds{0.01}));
    release = true;
    EXPECT_TRUE(scheduler->waitForBackground(Seconds{10}));
    scheduler.reset();
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
} // namespace pacelet
