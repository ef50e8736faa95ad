#include "tests/PaceletApp/Monitor/MonitorRig.h"

namespace pacelet::testing {
namespace {

class MonitorItems : public MonitorRig {
protected:
    std::int64_t scans() { return calls("/bin/launchctl"); }

    void refresh(bool force) {
        detach(monitor->refreshBackgroundItems(force));
        scheduler.settle();
    }
};

TEST_F(MonitorItems, AreScannedOnceAMinuteWhileTheWindowIsVisible) {
    startUp();
    advance(300);
    EXPECT_EQ(scans(), 0);
    monitor->setWindowVisible(true);
    scheduler.settle();
    EXPECT_EQ(scans(), 1);
    ASSERT_EQ(monitor->backgroundItems().size(), 1U);
    EXPECT_EQ(monitor->backgroundItems().front().label, "com.example.agent");
    advance(59);
    EXPECT_EQ(scans(), 1);
    advance(3);
    EXPECT_EQ(scans(), 2);
    monitor->setWindowVisible(false);
    EXPECT_FALSE(monitor->backgroundItemsKnown());
    monitor->setWindowVisible(true); // nothing is left of the last scan
    scheduler.settle();
    EXPECT_EQ(scans(), 3);
}

TEST_F(MonitorItems, AForcedRefreshRunsAtAnyTimeAndOthersKeepToTheirRate) {
    startUp();
    refresh(true);
    refresh(true);
    EXPECT_EQ(scans(), 2);
    advance(599);
    refresh(false);
    EXPECT_EQ(scans(), 2);
    advance(1);
    refresh(false);
    EXPECT_EQ(scans(), 3);
}

TEST_F(MonitorItems, AreMatchedByPathWhenLaunchctlFails) {
    startUp();
    const auto pid = mac.machine.lock()->processes.find("agent")->pid;
    mac.machine.inject(Simulated::ToolMissing{"/bin/launchctl"});
    refresh(true);
    ASSERT_EQ(monitor->backgroundItems().size(), 1U);
    EXPECT_EQ(monitor->backgroundItems().front().pid, pid);
    EXPECT_EQ(monitor->usage(pid)->name, "agent");
    EXPECT_TRUE(logged().empty());
}

TEST_F(MonitorItems, HoldWhatTheDesktopHasSetUpToo) {
    struct Desktop final : BackgroundItemSource {
        std::vector<BackgroundItem> items() override { return {BackgroundItem{}}; }
    } desktop;
    Platform here = mac.platform();
    here.backgroundItems = &desktop;
    monitor = std::make_unique<Monitor>(here, scheduler, smallCatalog());
    refresh(true);
    EXPECT_EQ(monitor->backgroundItems().size(), 2U);
}

TEST_F(MonitorItems, TheTickWaitsForItsScanAndHasToldTheRestBefore) {
    startUp();
    scheduler.setBackgroundDuration(Seconds{1});
    monitor->setWindowVisible(true);
    advance(1);
    EXPECT_EQ(monitor->lastChecked(), scheduler.now());
    EXPECT_TRUE(monitor->backgroundItems().empty());
    const std::int64_t before = samples();
    Notifications notifications{*monitor};
    monitor->checkNow(); // still ticking
    advance(1);
    EXPECT_EQ(samples(), before);
    EXPECT_THAT(notifications.take(),
                ElementsAre(Fields{monitor->backgroundItems, monitor->backgroundItemsKnown}));
    EXPECT_EQ(monitor->backgroundItems().size(), 1U);
    advance(2.5);
    EXPECT_EQ(samples(), before);
    advance(1.5); // three seconds after the end of the scan, and one of sampling
    EXPECT_EQ(samples(), before + 1);
}

} // namespace
} // namespace pacelet::testing
