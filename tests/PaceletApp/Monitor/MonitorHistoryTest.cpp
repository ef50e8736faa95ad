#include "tests/PaceletApp/Monitor/MonitorRig.h"

#include <filesystem>
#include <fstream>

namespace pacelet::testing {
namespace {

namespace fs = std::filesystem;

class MonitorHistory : public MonitorRig {
protected:
    fs::path folder() { return fs::path{mac.platform().applicationSupport} / "Pacelet"; }

    void setHeat(int state) { mac.machine.lock()->vitals.thermalState = state; }

    std::vector<MinuteRecord> records() { return monitor->usageStore().load(fromUnixTime(0)); }
};

TEST_F(MonitorHistory, SwitchedOffItWritesNothingAndTheOpenMinuteWaits) {
    mac.preferences.setData("keepUsageHistory", "no");
    startUp();
    EXPECT_TRUE(monitor->keepHistory()) << "what is stored is no switch";
    monitor->setKeepHistory(false);
    EXPECT_EQ(mac.preferences.boolean("keepUsageHistory"), false);
    advance(600);
    EXPECT_FALSE(fs::exists(folder()));
    monitor->setKeepHistory(true);
    EXPECT_EQ(mac.preferences.boolean("keepUsageHistory"), true);
    advance(30);
    ASSERT_EQ(records().size(), 1U);
    EXPECT_EQ(records().front().n, 1);
    EXPECT_EQ(records().front().t,
              static_cast<std::int64_t>(unixTime(Simulated::startOfSimulation) / 60));
    mac.preferences.setBoolean("keepUsageHistory", false);
    make();
    EXPECT_FALSE(monitor->keepHistory());
}

TEST_F(MonitorHistory, AWriteThatFailsIsLoggedAndItsRecordLost) {
    startUp();
    mac.machine.inject(Simulated::FolderUnwritable{folder()});
    advance(60);
    EXPECT_THAT(logged(), ElementsAre(StartsWith("history write failed: ")));
    EXPECT_EQ(monitor->error(), std::nullopt);
    mac.machine.clearFailures();
    advance(60);
    EXPECT_EQ(records().size(), 1U);
}

TEST_F(MonitorHistory, ReadsOnceWhatTheMacIsAndThenPrunes) {
    fs::create_directories(folder());
    for (const char* const file : {"usage-2026-02-03.jsonl", "causes-2026-02-03.jsonl",
                                   "usage-2026-02-04.jsonl", "usage-2026-03-06.jsonl"}) {
        std::ofstream{folder() / file} << "\n";
    }
    make();
    Notifications notifications{*monitor};
    scheduler.setBackgroundDuration(Seconds{1});
    monitor->start();
    monitor->setWindowVisible(true); // restarts while the profiler still runs
    advance(100);
    sleepMachine(100);
    EXPECT_EQ(calls("/usr/sbin/system_profiler"), 1);
    ASSERT_TRUE(monitor->mac());
    EXPECT_EQ(monitor->mac()->chip, "Apple M2");
    EXPECT_EQ(std::ranges::count(notifications.told, Fields{monitor->mac}), 1);
    EXPECT_FALSE(fs::exists(folder() / "usage-2026-02-03.jsonl"));
    EXPECT_FALSE(fs::exists(folder() / "causes-2026-02-03.jsonl"));
    EXPECT_TRUE(fs::exists(folder() / "usage-2026-02-04.jsonl"));
}

TEST_F(MonitorHistory, TellsWhatStoodEarlierWhileAllIsQuiet) {
    startUp();
    setHeat(2);
    advance(300);
    EXPECT_EQ(monitor->earlier(), std::nullopt) << "it still stands";
    setHeat(0);
    advance(120);
    ASSERT_NE(monitor->earlier(), std::nullopt);
    EXPECT_EQ(monitor->earlier()->cause.kind, FindingKind::heat);
    EXPECT_NEAR(monitor->earlier()->stood.count(), 300, 31);
    const Spell told = *monitor->earlier();
    startUp();
    advance(30);
    ASSERT_NE(monitor->earlier(), std::nullopt) << "another run knows it from the file";
    EXPECT_NEAR((monitor->earlier()->end - told.end).count(), 0, 60);
    monitor->setKeepHistory(false);
    EXPECT_EQ(monitor->earlier(), std::nullopt);
    monitor->setKeepHistory(true);
    advance(30);
    Notifications notifications{*monitor};
    monitor->forgetEarlier();
    EXPECT_THAT(notifications.take(), ElementsAre(Fields{monitor->earlier}));
    advance(30);
    EXPECT_EQ(monitor->earlier(), std::nullopt);

    monitor->setKeepHistory(false);
    const auto noted = [this] { return monitor->causeStore().load(distantPast).entries().size(); };
    const std::size_t before = noted();
    setHeat(2);
    advance(300);
    setHeat(0);
    advance(300);
    EXPECT_EQ(noted(), before);
    EXPECT_EQ(monitor->earlier(), std::nullopt);
}

} // namespace
} // namespace pacelet::testing
