#include "Core/Diagnosis/Diagnosis.h"
#include "tests/PaceletApp/Monitor/MonitorRig.h"

#include <rapidcheck/gtest.h>

#include <tuple>

namespace pacelet::testing {
namespace {

using MonitorTick = MonitorRig;

/// All published fields of a tick but the error.
auto pictureOf(const Monitor& monitor) {
    return std::tuple{monitor.groups(),
                      monitor.signals(),
                      monitor.result(),
                      monitor.lastChecked(),
                      monitor.spotlightBusySince(),
                      monitor.explanations(),
                      monitor.cpuHistory(),
                      monitor.memory(),
                      monitor.stuckApp()};
}

TEST_F(MonitorTick, PublishesTheWholePicture) {
    make();
    EXPECT_THAT(monitor->groups(), IsEmpty());
    EXPECT_EQ(monitor->result(), DiagnosisResult{});
    EXPECT_EQ(monitor->lastChecked(), std::nullopt);
    monitor->start();
    scheduler.settle();
    ASSERT_THAT(monitor->groups(), SizeIs(3));
    EXPECT_EQ(monitor->groups().front().id, notes);
    EXPECT_NEAR(monitor->signals()->cpuLoadPercent, 36.0 / 8, 0.1);
    EXPECT_EQ(monitor->memory()->total, mac.kernel.physicalMemory());
    EXPECT_EQ(monitor->lastChecked(), scheduler.now());
    ASSERT_THAT(monitor->cpuHistory(), SizeIs(1));
    EXPECT_EQ(monitor->cpuHistory().front(),
              (CPUPoint{scheduler.now(), monitor->signals()->cpuLoadPercent}));
    EXPECT_EQ(monitor->group(std::nullopt), nullptr);
    EXPECT_EQ(monitor->group("/Applications/Gone.app"), nullptr);
    const ProcessUsage& helper = monitor->groups().front().members.back();
    EXPECT_EQ(monitor->usage(helper.pid).get(), &helper);
    EXPECT_EQ(monitor->usage(-1), nullptr);
}

TEST_F(MonitorTick, SmoothsGroupsOverThreeTicksAndLeavesTheirMembersRaw) {
    startUp();
    advance(90);
    EXPECT_NEAR(cpuOf(notes), 30, 0.5);
    setLoad("Notes", 110);
    for (const double expected : {60.0, 90.0, 120.0, 120.0}) {
        advance(30);
        EXPECT_NEAR(cpuOf(notes), expected, 0.5);
        EXPECT_NEAR(monitor->group(notes)->members.front().cpuPercent, 110, 0.5);
    }
    quit("Notes");
    advance(30);
    EXPECT_EQ(monitor->group(notes), nullptr);
}

TEST_F(MonitorTick, AFailureKeepsThePictureAndTheNextGoodTickSpansTheGap) {
    startUp();
    advance(60);
    const auto good = pictureOf(*monitor);
    Notifications notifications{*monitor};
    mac.machine.inject(Simulated::ToolMissing{"/bin/ps"});
    advance(30);
    EXPECT_THAT(notifications.take(), ElementsAre(Fields{monitor->error}));
    mac.machine.clearFailures();
    mac.machine.inject(Simulated::ToolFails{"/bin/ps", 7, {}});
    advance(30);
    EXPECT_THAT(notifications.take(), IsEmpty());
    EXPECT_EQ(monitor->error(), "Couldn't read processes. Retrying.");
    EXPECT_TRUE(pictureOf(*monitor) == good);
    const std::vector<std::string> lines = logged();
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_THAT(lines, Each(StartsWith("sample failed: ")));
    EXPECT_NE(lines[0], lines[1]);

    setLoad("Notes", 110);
    mac.machine.clearFailures();
    advance(30);
    EXPECT_EQ(monitor->error(), std::nullopt);
    // 60 seconds at 20 and 30 at 110 since the last good snapshot.
    EXPECT_NEAR(monitor->group(notes)->members.front().cpuPercent, 50, 0.5);
}

TEST_F(MonitorTick, AnEmptyTableIsNoFailure) {
    startUp();
    mac.machine.inject(Simulated::ToolPrints{"/bin/ps", "rubbish\n"});
    advance(30);
    EXPECT_THAT(monitor->groups(), IsEmpty());
    EXPECT_EQ(monitor->error(), std::nullopt);
    EXPECT_EQ(monitor->lastChecked(), scheduler.now());
}

TEST_F(MonitorTick, TellsAllChangesOnceAndNothingThatStayed) {
    startUp();
    monitor->setWindowVisible(true);
    setLoad("mds_stores", 180);
    scheduler.settle();
    Notifications notifications{*monitor};
    advance(3);
    EXPECT_THAT(notifications.take(),
                ElementsAre(Fields{monitor->groups, monitor->signals, monitor->result,
                                   monitor->lastChecked, monitor->cpuHistory}));
    // At the same moment twice more: after the first of them only the history grows.
    monitor->checkNow();
    scheduler.settle();
    notifications.take();
    monitor->checkNow();
    scheduler.settle();
    ASSERT_THAT(notifications.told, SizeIs(1));
    EXPECT_TRUE(notifications.told[0].hold(monitor->cpuHistory));
    EXPECT_FALSE(
        notifications.told[0].hold(monitor->lastChecked, monitor->memory, monitor->result));
}

TEST_F(MonitorTick, WhoHoldsAPictureKeepsIt) {
    startUp();
    const auto held = monitor->groups.held();
    // A copy: what is held is not to change.
    const ProcessGroups before = *held; // NOLINT(performance-unnecessary-copy-initialization)
    const auto group = monitor->group(notes);
    const auto helper = monitor->usage(group->members.back().pid);
    monitor->setWindowVisible(true);
    scheduler.settle();
    const auto explanation = monitor->explanation(*group);
    quit("Notes");
    monitor->setWindowVisible(false);
    advance(30);
    ASSERT_EQ(monitor->group(notes), nullptr);
    monitor.reset();
    EXPECT_EQ(*held, before);
    EXPECT_EQ(group->displayName + helper->name + explanation->title, "NotesHelperPart of Notes");
}

TEST_F(MonitorTick, TellsSettersOnlyOfChanges) {
    startUp();
    Notifications notifications{*monitor};
    monitor->setMenuOpen(false);
    monitor->setWindowVisible(false);
    monitor->setKeepHistory(true);
    monitor->setStuckApp(std::nullopt);
    EXPECT_THAT(notifications.take(), IsEmpty());
    monitor->setMenuOpen(true);
    monitor->setWindowVisible(true);
    monitor->setKeepHistory(false);
    monitor->setStuckApp("Notes");
    monitor->setStuckApp("Notes");
    monitor->togglePause();
    EXPECT_THAT(notifications.take(),
                ElementsAre(Fields{monitor->menuOpen}, Fields{monitor->windowVisible},
                            Fields{monitor->keepHistory}, Fields{monitor->stuckApp},
                            Fields{monitor->isPaused}));
}

TEST_F(MonitorTick, SpotlightsSpellFollowsTheSmoothedLoadAndSurvivesSleep) {
    startUp();
    setLoad("mds_stores", 120);
    advance(30); // a mean of 62.5
    const auto since = monitor->spotlightBusySince();
    EXPECT_EQ(since, scheduler.now());
    advance(60);
    sleepMachine(600);
    EXPECT_EQ(monitor->spotlightBusySince(), since);
    setLoad("mds_stores", 0);
    advance(30); // 60
    EXPECT_EQ(monitor->spotlightBusySince(), since);
    advance(30); // 40
    EXPECT_EQ(monitor->spotlightBusySince(), std::nullopt);
}

TEST_F(MonitorTick, AListenerMayEndTheMonitor) {
    make();
    QObject context;
    QObject::connect(monitor.get(), &Monitor::changed, &context, [&](const Fields& fields) {
        if (fields.hold(monitor->groups)) {
            monitor.reset();
        }
    });
    monitor->setWindowVisible(true);
    monitor->start();
    advance(10);
    EXPECT_EQ(monitor, nullptr);
    EXPECT_EQ(scheduler.pendingSleeps(), 0U);
}

RC_GTEST_PROP(CPUHistory, HoldsJustTheLastTenMinutesHoweverTheClockJumps,
              (const std::vector<std::int16_t>& steps)) {
    CPUHistory history;
    CPUHistory kept;
    double now = 1'800'000'000;
    for (const std::int16_t step : steps) {
        now += step;
        const CPUPoint point{fromUnixTime(now), static_cast<double>(step)};
        addPoint(history, point);
        std::erase_if(kept, [&](const CPUPoint& old) { return now - unixTime(old.date) > 600; });
        kept.push_back(point);
        RC_ASSERT(history == kept);
    }
}

} // namespace
} // namespace pacelet::testing
