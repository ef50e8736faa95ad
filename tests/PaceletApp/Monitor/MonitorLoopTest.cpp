#include "tests/PaceletApp/Monitor/MonitorRig.h"
#include "tests/PaceletApp/Support/Table.h"

namespace pacelet::testing {
namespace {

using ::testing::DoubleNear;

using MonitorLoop = MonitorRig;

TEST_F(MonitorLoop, NothingRunsWithoutACatalog) {
    make(std::nullopt);
    monitor->start();
    monitor->setWindowVisible(true);
    monitor->checkNow();
    advance(3600);
    EXPECT_EQ(samples(), 0);
    EXPECT_EQ(calls("/usr/sbin/system_profiler"), 0);
    EXPECT_EQ(scheduler.pendingSleeps(), 0U);
    EXPECT_EQ(mac.workspace.observerCount(), 0U);
    EXPECT_EQ(monitor->error(), std::nullopt);
    EXPECT_EQ(monitor->catalog(), nullptr);
    EXPECT_EQ(monitor->explanation(ProcessGroup{}), nullptr);
    EXPECT_EQ(
        loadCatalog({.mainFolder = mac.platform().home, .resourceBundle = mac.platform().home}),
        std::nullopt);
}

TEST_F(MonitorLoop, TheIntervalRunsFromTheEndOfATickAndFollowsWhatIsOpen) {
    startUp();
    scheduler.setBackgroundDuration(Seconds{0.25});
    std::optional<TimePoint> last;
    std::vector<double> periods;
    QObject::connect(monitor.get(), &Monitor::changed, monitor.get(), [&](const Fields& fields) {
        if (!fields.hold(monitor->lastChecked)) {
            return;
        }
        if (last) {
            periods.push_back((*monitor->lastChecked() - *last).count());
        }
        last = monitor->lastChecked();
    });
    // The period is the interval and the length of the tick.
    const Table<bool, bool, bool, double> rows = {
        {false, true, false, 3.25},  {false, false, false, 30.25}, {false, true, true, 3.25},
        {false, false, true, 60.25}, {true, false, true, 3.25},    {true, true, true, 3.25}};
    for (const auto& [window, menu, lowPower, period] : rows) {
        mac.machine.lock()->vitals.lowPower = lowPower;
        monitor->setWindowVisible(window);
        monitor->setMenuOpen(menu);
        advance(1); // the tick of the restart, and the first scan of the background items
        periods.clear();
        advance(period * 12);
        EXPECT_GE(periods.size(), 11U);
        // The tick waits for the scan that is due once a minute with the window open.
        std::erase(periods, window ? period + 0.25 : 0);
        EXPECT_THAT(periods, Each(DoubleNear(period, 1e-5))) << period;
    }
}

TEST_F(MonitorLoop, AnHourUnattendedWakesOnceATick) {
    make();
    monitor->start();
    monitor->start();
    advance(3600);
    EXPECT_EQ(samples(), 121);
    EXPECT_EQ(scheduler.wakeups(), 120U); // the first tick needed none
    EXPECT_EQ(scheduler.pendingSleeps(), 1U);
    EXPECT_EQ(mac.workspace.observerCount(), 1U);
    EXPECT_EQ(calls("/bin/launchctl"), 0);
}

TEST_F(MonitorLoop, OpeningTheWindowInMidSleepTicksAtOnceAndClosingItEmptiesWhatOnlyItShows) {
    startUp();
    advance(10);
    monitor->setWindowVisible(true);
    EXPECT_EQ(samples(), 1);
    scheduler.settle();
    EXPECT_EQ(samples(), 2);
    EXPECT_EQ(monitor->explanations().size(), monitor->groups().size());
    EXPECT_FALSE(monitor->backgroundItems().empty());
    advance(3);
    EXPECT_EQ(samples(), 3);
    monitor->setWindowVisible(true); // no change, no restart
    advance(2);
    EXPECT_EQ(samples(), 3);
    monitor->setWindowVisible(false);
    EXPECT_TRUE(monitor->explanations().empty());
    EXPECT_TRUE(monitor->backgroundItems().empty());
    scheduler.settle();
    EXPECT_EQ(samples(), 4);
    advance(29);
    EXPECT_EQ(samples(), 4);
    EXPECT_EQ(scheduler.pendingSleeps(), 1U);
}

TEST_F(MonitorLoop, ATickExplainsForTheWindowThatWasOpenWhenItBegan) {
    make();
    scheduler.setBackgroundDuration(Seconds{1});
    monitor->start();
    advance(0.5);
    monitor->setWindowVisible(true);
    monitor->checkNow();
    advance(0.5);
    EXPECT_EQ(samples(), 1);
    EXPECT_EQ(monitor->groups().size(), 3U);
    EXPECT_TRUE(monitor->explanations().empty());
    const ProcessGroup& spotlight =
        *std::ranges::find(monitor->groups(), "mds_stores", &ProcessGroup::displayName);
    EXPECT_EQ(monitor->explanation(spotlight)->title, "Spotlight");
    advance(2.5); // the new loop has slept since its own first tick found this one under way
    EXPECT_EQ(samples(), 1);
    advance(0.5);
    const std::int64_t scans = calls("/bin/launchctl");
    monitor->setWindowVisible(false);
    advance(0.5);
    EXPECT_EQ(samples(), 2);
    EXPECT_EQ(monitor->explanations().size(), 3U);
    EXPECT_EQ(calls("/bin/launchctl"), scans);
}

TEST_F(MonitorLoop, APausedLoopKeepsItsBeatAndSamplesOnlyOnDemand) {
    startUp();
    monitor->togglePause();
    advance(300);
    EXPECT_EQ(samples(), 1);
    EXPECT_EQ(scheduler.pendingSleeps(), 1U);
    monitor->checkNow();
    scheduler.settle();
    EXPECT_EQ(samples(), 2);
    EXPECT_TRUE(monitor->isPaused());
    scheduler.setBackgroundDuration(Seconds{1});
    advance(29.5);
    monitor->togglePause(); // half a second before the loop's own tick, which finds this one
    advance(1);
    EXPECT_EQ(samples(), 3);
    EXPECT_EQ(scheduler.pendingJobs(), 0U);
    advance(60);
    EXPECT_EQ(samples(), 4);
}

TEST_F(MonitorLoop, NoTickRunsDuringSleepAndTheFirstOneAfterItStartsAfresh) {
    startUp();
    setLoad("Notes", 80);
    advance(90);
    EXPECT_NEAR(cpuOf(notes), 90, 1);
    const std::int64_t before = samples();
    setLoad("Notes", 0);
    sleepMachine(3600);
    EXPECT_EQ(samples(), before + 1);
    // No mean with the ticks before: what `ps` says of this moment, from a new snapshot and a new
    // history.
    EXPECT_NEAR(cpuOf(notes), 10, 0.1);
    EXPECT_EQ(monitor->cpuHistory().size(), 1U);
    setLoad("Notes", 60);
    advance(30);
    EXPECT_NEAR(cpuOf(notes), (10 + 70) / 2.0, 1);
}

TEST_F(MonitorLoop, ASleepInTheMiddleOfATickForgetsTheTicksBeforeIt) {
    startUp();
    setLoad("Notes", 80);
    advance(90);
    setLoad("Notes", 0);
    advance(29);
    scheduler.setBackgroundDuration(Seconds{2});
    advance(2);
    mac.workspace.sleep();
    mac.workspace.wake();
    advance(2);
    EXPECT_EQ(monitor->cpuHistory().size(), 5U);
    EXPECT_NEAR(cpuOf(notes), 10, 1) << "and no mean with 90, 90";
}

TEST_F(MonitorLoop, ATickUnderWayOutlivesEveryRestartAndNoTwoOverlap) {
    make();
    scheduler.setBackgroundDuration(Seconds{2});
    monitor->start();
    for (int change = 0; change < 40; ++change) {
        advance(0.3);
        monitor->setMenuOpen(change % 2 == 0);
        monitor->checkNow();
        if (change % 7 == 0) {
            monitor->togglePause();
        }
        // The profiler runs beside the first tick.
        EXPECT_LE(scheduler.pendingJobs(),
                  scheduler.monotonicNow() < MonotonicTime{Seconds{1004}} ? 2U : 1U);
        EXPECT_LE(scheduler.pendingSleeps(), 4U);
    }
    advance(10);
    EXPECT_EQ(scheduler.pendingSleeps(), 1U);
}

TEST_F(MonitorLoop, GoesWhateverIsUnderWay) {
    for (const double moment : {0.0, 0.5, 1.0, 1.5, 2.5, 20.0}) {
        make();
        scheduler.setBackgroundDuration(Seconds{1});
        monitor->setWindowVisible(true);
        monitor->start();
        monitor->checkNow();
        advance(moment);
        monitor.reset();
        advance(5);
        EXPECT_EQ(scheduler.pendingSleeps(), 0U) << moment;
        EXPECT_EQ(scheduler.pendingJobs(), 0U) << moment;
        EXPECT_EQ(mac.workspace.observerCount(), 0U) << moment;
    }
}

} // namespace
} // namespace pacelet::testing
