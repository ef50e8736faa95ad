#include "Core/Diagnosis/Diagnosis.h"
#include "tests/PaceletApp/Monitor/MonitorRig.h"

#include <rapidcheck/gtest.h>

#include <set>
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
    EXPECT_EQ(monitor->usage(helper.pid), &helper);
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
    EXPECT_THAT(notifications.take(), ElementsAre("error"));
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

TEST_F(MonitorTick, TellsEachChangeOnceAndOnlyWhenTheWholeTickIsSet) {
    make();
    Notifications notifications{*monitor};
    std::optional<std::pair<decltype(pictureOf(*monitor)), std::optional<std::string>>> first;
    int told = 0;
    monitor->setWindowVisible(true);
    scheduler.settle();
    for (const auto& each : monitorSignals) {
        QObject::connect(monitor.get(), each.first, &notifications, [&] {
            ++told;
            const auto now = std::pair{pictureOf(*monitor), monitor->error()};
            if (!first) {
                first = now;
            }
            EXPECT_TRUE(*first == now);
        });
    }
    setLoad("mds_stores", 180);
    for (int tick = 0; tick < 8; ++tick) {
        if (tick == 5) {
            mac.machine.lock()->vitals.pressureLevel = 4;
        }
        scheduler.settle();
        first.reset();
        notifications.take();
        advance(3);
        const std::vector<std::string> names = notifications.take();
        EXPECT_EQ((std::set<std::string>(names.begin(), names.end()).size()), names.size());
    }
    EXPECT_GT(told, 30);

    // At the same moment twice more: after the first of them only the history grows.
    for (int tick = 0; tick < 2; ++tick) {
        first.reset();
        notifications.take();
        monitor->checkNow();
        scheduler.settle();
    }
    const std::vector<std::string> names = notifications.take();
    EXPECT_THAT(names, Contains("cpuHistory"));
    EXPECT_THAT(names, Not(Contains(::testing::AnyOf("lastChecked", "memory", "result"))));
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
    monitor->setKeepHistory(false);
    monitor->setStuckApp("Notes");
    monitor->setStuckApp("Notes");
    monitor->togglePause();
    EXPECT_THAT(notifications.take(),
                ElementsAre("menuOpen", "keepHistory", "stuckApp", "isPaused"));
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
    QObject::connect(monitor.get(), &Monitor::groupsChanged, &context, [&] { monitor.reset(); });
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
