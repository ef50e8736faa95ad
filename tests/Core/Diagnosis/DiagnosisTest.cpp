#include "Core/Diagnosis/Diagnosis.h"

#include "tests/Support/Processes.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace pacelet {
namespace {

using testing::app;
using testing::lone;

constexpr std::int64_t GiB = std::int64_t{1} << 30;
constexpr std::int64_t decimalGB = 1'000'000'000;

const ProcessCatalog catalog{{
    {"hog", {{"hog"}, {}, {}}, "Hog", "It hogs.", "Why.", Verdict::leave, "Ends soon", {}, "g", {}},
    {"Indexer",
     {{"Indexer"}, {}, {}},
     "Indexer",
     "It indexes.",
     "Why.",
     Verdict::safe,
     {},
     {FixID::openWiFiSettings, FixID::rebuildSpotlightIndex, FixID::quitApp},
     "g",
     {}},
}};

/// A quiet machine that the tests upset.
struct Machine {
    Machine() {
        input.signals.coreCount = 8;
        input.signals.diskTotalBytes = 1000 * decimalGB;
        input.signals.diskFreeBytes = 500 * decimalGB;
        input.signals.memoryTotalBytes = 16 * GiB;
        input.now = fromUnixTime(1'800'000'000);
    }

    DiagnosisResult run() {
        input.groups = groups;
        return Diagnosis::run(input, catalog);
    }
    std::vector<Finding> findings() { return run().findings; }

    /// The ids of all findings, in order.
    std::string ids() {
        std::string text;
        for (const Finding& finding : findings()) {
            text += (text.empty() ? "" : " ") + finding.id();
        }
        return text;
    }

    DiagnosisInput input;
    std::vector<ProcessGroup> groups;
};

void expectFinding(const std::vector<Finding>& findings, const Finding::Fields& expected) {
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].headline(), expected.headline);
    EXPECT_EQ(findings[0].detail(), expected.detail);
    EXPECT_EQ(findings[0], Finding{expected}) << findings[0].id();
}

TEST(Diagnosis, FindsNothingOnAQuietMachine) {
    Machine machine;
    machine.groups = {app("Safari", 79.9, GiB), lone(1, "/usr/sbin/x", 20)};
    machine.input.signals.uptime = 400 * 86400.0;
    EXPECT_EQ(machine.run(), (DiagnosisResult{Status::quiet, {}}));
}

TEST(Diagnosis, StuckApp) {
    Machine machine;
    machine.input.stuckApp = "Photo Tool";
    expectFinding(machine.findings(),
                  {FindingKind::stuckApp, Severity::high,
                   "Photo Tool won't quit. Restart your Mac to clear it.",
                   "Some apps can't be closed once they're stuck. A restart clears them.",
                   std::nullopt, FixID::restartMac, std::nullopt});
}

TEST(Diagnosis, Heat) {
    Machine machine;
    machine.input.signals.thermal = Thermal::warm;
    expectFinding(machine.findings(),
                  {FindingKind::heat, Severity::low,
                   "Your Mac is warm, so macOS is slowing it slightly to cool down.",
                   "kernel_task holds back other work to cool your Mac. Heavy apps and blocked "
                   "vents make it worse.",
                   std::nullopt, std::nullopt, "Leave it"});
    machine.input.signals.thermal = Thermal::hot;
    expectFinding(machine.findings(),
                  {FindingKind::heat, Severity::high,
                   "Your Mac is hot and slowing itself down to cool off.",
                   "kernel_task holds back other work to cool your Mac. Quit heavy apps and give "
                   "it some air.",
                   std::nullopt, std::nullopt, "Leave it"});
    machine.input.signals.thermal = Thermal::veryHot;
    machine.input.stuckApp = "X";
    EXPECT_EQ(machine.ids(), "heat stuckApp") << "critical before high";
    EXPECT_EQ(machine.findings()[0].headline(),
              "Your Mac is very hot and running much slower to protect itself.");
    EXPECT_EQ(machine.findings()[0].detail(),
              "Quit heavy apps, unplug extra displays and give it some air.");
}

TEST(Diagnosis, MemoryFiresOnPressureOrSwap) {
    Machine machine;
    machine.input.signals.swapUsedBytes = 4 * GiB;
    EXPECT_EQ(machine.ids(), "");
    machine.input.signals.swapUsedBytes = 4 * GiB + 1;
    expectFinding(machine.findings(),
                  {FindingKind::memory, Severity::medium, "Your Mac is running low on memory.",
                   "Swap in use: 4 GB.", std::nullopt, std::nullopt, std::nullopt});
    machine.input.signals.pressure = Pressure::elevated;
    EXPECT_EQ(machine.findings()[0].severity(), Severity::medium);
    machine.input.signals.pressure = Pressure::critical;
    EXPECT_EQ(machine.findings()[0].severity(), Severity::high);
}

TEST(Diagnosis, MemoryBlamesTheLargestThatCanBeQuit) {
    Machine machine;
    machine.input.signals.pressure = Pressure::elevated;
    machine.groups = {lone(1, "/usr/sbin/huge", 5, 9 * GiB), app("Small", 4, GiB),
                      app("First", 3, 3 * GiB), app("Second", 2, 3 * GiB)};
    expectFinding(machine.findings(), {FindingKind::memory, Severity::medium,
                                       "Your Mac is running low on memory.", "First is using 3 GB.",
                                       "/Applications/First.app", FixID::quitApp, std::nullopt});
    machine.groups.resize(1);
    const auto findings = machine.findings();
    EXPECT_EQ(findings[0].detail(), "huge is using 9 GB.");
    EXPECT_EQ(findings[0].groupID(), "pid:1");
    EXPECT_EQ(findings[0].primaryFix(), std::nullopt);
}

TEST(Diagnosis, SpotlightIsOneFindingForTheWholeFamily) {
    Machine machine;
    machine.groups = {lone(1, "/x/mdworker", 90), lone(2, "/x/mds_stores", 30)};
    expectFinding(machine.findings(),
                  {FindingKind::spotlight, Severity::low, "Spotlight is doing a lot of work.",
                   "mdworker is using 120% CPU while it updates the search index. That's normal "
                   "after an update or a large file change.",
                   "pid:1", FixID::openSpotlightSettings, "Settles on its own"});

    machine.input.spotlightBusySince = machine.input.now - Seconds{10800};
    EXPECT_EQ(machine.findings()[0].severity(), Severity::low) << "exactly three hours";
    machine.input.spotlightBusySince = machine.input.now - Seconds{10800.5};
    expectFinding(machine.findings(),
                  {FindingKind::spotlight, Severity::high, "Spotlight is doing a lot of work.",
                   "Spotlight has been busy for over 3 hours, which usually means it's stuck. "
                   "Rebuilding the index often fixes it.",
                   "pid:1", FixID::rebuildSpotlightIndex, "Settles on its own"});
}

TEST(Diagnosis, ALightFamilyLeavesItsMembersToTheOtherRules) {
    Machine machine;
    machine.groups = {lone(1, "/x/mds", 49.9)};
    EXPECT_EQ(machine.ids(), "");
    machine.groups = {lone(1, "/x/mds", 50)};
    EXPECT_EQ(machine.ids(), "spotlight:pid:1");
    machine.groups = {lone(1, "/x/Mds", 90)};
    EXPECT_EQ(machine.ids(), "cpuHog:pid:1") << "names are compared exactly";
    machine.groups = {lone(1, "/x/photoanalysisd", 29.9)};
    EXPECT_EQ(machine.ids(), "");
}

TEST(Diagnosis, Photos) {
    Machine machine;
    machine.groups = {lone(1, "/x/photoanalysisd", 20), lone(2, "/x/mediaanalysisd", 300)};
    expectFinding(machine.findings(),
                  {FindingKind::photos, Severity::low, "Photos is analyzing your library.",
                   "It finds faces and objects in your photos, mostly while your Mac is idle and "
                   "plugged in.",
                   "pid:2", std::nullopt, "Runs while plugged in"});
}

TEST(Diagnosis, WindowServerIsNeverAHog) {
    Machine machine;
    machine.groups = {lone(1, "/x/WindowServer", 39.9)};
    EXPECT_EQ(machine.ids(), "");
    machine.groups = {lone(1, "/x/WindowServer", 395)};
    expectFinding(machine.findings(),
                  {FindingKind::windowServer, Severity::medium,
                   "WindowServer is busy drawing your screen.",
                   "Many windows, external displays or transparency effects keep it busy.", "pid:1",
                   FixID::explain, std::nullopt});
}

TEST(Diagnosis, BrowsersAreNeverHogs) {
    Machine machine;
    machine.groups = {app("Google Chrome", 49.9, 1'499'999'999)};
    EXPECT_EQ(machine.ids(), "");
    machine.groups = {app("Google Chrome", 45, 1'500'000'000, 0)};
    expectFinding(machine.findings(),
                  {FindingKind::browser, Severity::medium,
                   "Google Chrome and 0 helpers are using 45% CPU and 1.4 GB.",
                   "Each tab and extension runs as its own helper. Closing tabs you don't need "
                   "frees memory.",
                   "/Applications/Google Chrome.app", FixID::reviewTabs, std::nullopt});
    machine.groups = {app("Microsoft Edge", 300, GiB, 12), app("Brave Browser", 50, 1, 1)};
    EXPECT_EQ(machine.ids(),
              "browser:/Applications/Microsoft Edge.app browser:/Applications/Brave Browser.app");
    EXPECT_EQ(machine.findings()[0].headline(),
              "Microsoft Edge and 12 helpers are using 300% CPU and 1 GB.");
}

TEST(Diagnosis, TellsBrowsersByTheirBundleName) {
    EXPECT_TRUE(Diagnosis::isBrowser(app("Google Chrome", 0)));
    EXPECT_FALSE(Diagnosis::isBrowser(app("My Google Chrome", 0)));
    EXPECT_FALSE(Diagnosis::isBrowser(app("Google Chrome Canary", 0)));
    EXPECT_FALSE(Diagnosis::isBrowser(lone(1, "/x/Google Chrome", 0)));
    const std::vector<ProcessGroup> groups{app("Safari", 0)};
    EXPECT_TRUE(Diagnosis::isRunning("Safari", groups));
    EXPECT_FALSE(Diagnosis::isRunning("safari", groups));
}

TEST(Diagnosis, HogsOfTheUserAndOfTheSystem) {
    Machine machine;
    machine.groups = {lone(1, "/x/hog", 80)};
    expectFinding(machine.findings(),
                  {FindingKind::cpuHog, Severity::medium, "hog is using 80% CPU.", "It hogs.",
                   "pid:1", FixID::explain, "Ends soon"});
    machine.groups = {app("Tower", 120)};
    expectFinding(machine.findings(),
                  {FindingKind::cpuHog, Severity::medium, "Tower is using 120% CPU.",
                   "Belongs to Tower. Quitting Tower stops it.", "/Applications/Tower.app",
                   FixID::quitApp, std::nullopt});
    machine.groups = {app("Indexer", 120)};
    EXPECT_EQ(machine.findings()[0].primaryFix(), FixID::rebuildSpotlightIndex)
        << "the first of the fixes that act";
    machine.groups[0].quittable = false;
    EXPECT_EQ(machine.findings()[0].primaryFix(), FixID::explain);
}

TEST(Diagnosis, HogsAreGraveByTheSizeOfTheMachine) {
    Machine machine;
    const std::vector<std::tuple<int, double, Severity>> cases{
        {8, 199, Severity::medium}, {8, 200, Severity::high},     {16, 399, Severity::medium},
        {16, 400, Severity::high},  {4, 199.9, Severity::medium}, {4, 200, Severity::high},
    };
    for (const auto& [cores, load, severity] : cases) {
        machine.input.signals.coreCount = cores;
        machine.groups = {lone(1, "/x/hog", load)};
        EXPECT_EQ(machine.findings()[0].severity(), severity) << cores << " cores, " << load;
    }
}

TEST(Diagnosis, VirtualMachinesPointAtTheirHost) {
    Machine machine;
    const std::string path = std::string{Diagnosis::virtualizationPrefix} + "XPC/VirtualMachine";
    machine.groups = {lone(1, path, 300), lone(2, path, 250), app("Docker", 2)};
    const auto findings = machine.findings();
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0],
              (Finding{{FindingKind::cpuHog, Severity::high, "A virtual machine is using 300% CPU.",
                        "It's run by Docker. Quitting Docker frees all of it.",
                        "/Applications/Docker.app", FixID::quitApp, std::nullopt}}));
    EXPECT_EQ(findings[1].id(), findings[0].id()) << "two machines of one host";

    machine.groups[2].quittable = false;
    EXPECT_EQ(machine.findings()[0].primaryFix(), FixID::explain);
    machine.groups = {lone(1, path, 300), lone(3, "/x/Docker", 0)};
    EXPECT_EQ(machine.findings()[0],
              (Finding{{FindingKind::cpuHog, Severity::high, "A virtual machine is using 300% CPU.",
                        "A built-in macOS process.", "pid:1", FixID::explain, std::nullopt}}));
}

TEST(Diagnosis, DiskByFreeSpaceAndShare) {
    struct Case {
        std::int64_t free;
        std::int64_t total;
        std::string headline;
        std::string detail;
    };
    const std::string almost = "Your disk is almost full.";
    const std::string getting = "Your disk is getting full.";
    const std::string keep =
        " free. Keep at least 10% free so macOS has room for memory and updates.";
    const std::vector<Case> cases{
        {12 * decimalGB, 100 * decimalGB, almost,
         "Only 11.18 GB free. macOS slows down when space runs low."},
        {15 * decimalGB, 100 * decimalGB, "", ""},
        {15 * decimalGB, 151 * decimalGB, getting, "13.97 GB" + keep},
        {15 * decimalGB, 150 * decimalGB, "", ""},
        {40 * decimalGB, 1000 * decimalGB, getting, "37.25 GB" + keep},
        {50 * decimalGB, 1000 * decimalGB, "", ""},
        {0, 0, "", ""},
        {0, 1, almost, "Only 0 KB free. macOS slows down when space runs low."},
    };
    for (const Case& row : cases) {
        Machine machine;
        machine.input.signals.diskFreeBytes = row.free;
        machine.input.signals.diskTotalBytes = row.total;
        if (row.headline.empty()) {
            EXPECT_EQ(machine.ids(), "") << row.free << " of " << row.total;
        } else {
            expectFinding(machine.findings(),
                          {FindingKind::lowDisk,
                           row.headline == almost ? Severity::high : Severity::medium, row.headline,
                           row.detail, std::nullopt, FixID::openTidyvault, std::nullopt});
        }
    }
}

TEST(Diagnosis, LowPowerModeAndLongUptime) {
    Machine machine;
    machine.input.lowPowerMode = true;
    expectFinding(machine.findings(),
                  {FindingKind::lowPower, Severity::low,
                   "Low Power Mode is on, so your Mac runs slower to save energy.",
                   "Turn it off in Battery settings when you need full speed.", std::nullopt,
                   FixID::openBatterySettings, std::nullopt});
    EXPECT_EQ(machine.run().status, Status::busy);

    machine.input.lowPowerMode = false;
    machine.input.signals.uptime = 15 * 86400.0;
    machine.input.signals.swapUsedBytes = 2 * GiB;
    EXPECT_EQ(machine.ids(), "");
    machine.input.signals.swapUsedBytes = 2 * GiB + 1;
    expectFinding(machine.findings(),
                  {FindingKind::longUptime, Severity::low, "Your Mac hasn't restarted in 15 days.",
                   "A restart clears memory that has built up over time.", std::nullopt,
                   FixID::restartMac, std::nullopt});
    machine.input.signals.uptime = 15 * 86400.0 - 1;
    EXPECT_EQ(machine.ids(), "");
}

TEST(DiagnosisDeathTest, StopsOnAnUptimeThatIsNone) {
    Machine machine;
    machine.input.signals.uptime = std::nan("");
    EXPECT_DEATH(machine.run(), "uptime");
}

TEST(Diagnosis, RanksBySeverityThenLoadThenRule) {
    Machine machine;
    machine.input.stuckApp = "X";
    machine.input.signals.diskFreeBytes = decimalGB;
    machine.input.signals.thermal = Thermal::warm;
    machine.input.lowPowerMode = true;
    machine.groups = {app("A", 100), app("B", 90), lone(1, "/x/mds", 60), lone(2, "/x/hog", 250)};
    EXPECT_EQ(machine.ids(), "cpuHog:pid:2 stuckApp lowDisk cpuHog:/Applications/A.app "
                             "cpuHog:/Applications/B.app spotlight:pid:1 heat lowPower");
    EXPECT_EQ(machine.run().status, Status::struggling);
}

} // namespace
} // namespace pacelet
