#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Diagnosis/MachineReading.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "tests/Support/Table.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace pacelet::Simulated {
namespace {

using ::testing::AllOf;
using ::testing::Ge;
using ::testing::Le;

/// What three ticks, three seconds apart, make of a machine.
struct Watched {
    MachineReading reading;
    DiagnosisResult result;
};

Watched watch(SimulatedMac& mac, std::optional<TimePoint> spotlightBusySince = {}) {
    const Platform platform = mac.platform();
    const ProcessCatalog catalog;
    Watched watched;
    std::optional<Snapshot> previous;
    for (int tick = 0; tick < 3; ++tick) {
        mac.machine.advance(Seconds{3});
        watched.reading = readMachine(platform.tools, platform.kernel, platform.clock, previous,
                                      catalog, Explaining::no);
        previous = watched.reading.snapshot;
    }
    DiagnosisInput input;
    input.signals = watched.reading.signals;
    input.groups = watched.reading.groups;
    input.spotlightBusySince = spotlightBusySince;
    input.lowPowerMode = platform.kernel.isLowPowerModeEnabled();
    input.now = platform.clock.now();
    watched.result = Diagnosis::run(input, catalog);
    return watched;
}

TEST(Scenarios, AreBelievableMachinesWithTheirFindings) {
    for (const auto& [scenario, findings] :
         pacelet::testing::rows<2>("Simulated", "findings of scenarios")) {
        for (const std::uint64_t seed : {1U, 2U, 77U}) {
            SCOPED_TRACE(scenario + ", seed " + std::to_string(seed));
            const auto mac = makeScenario(scenario, seed);
            ASSERT_NE(mac, nullptr);
            const Watched watched = watch(*mac);
            EXPECT_THAT(watched.reading.snapshot.processes.size(), AllOf(Ge(250U), Le(600U)));
            std::vector<std::string_view> kinds;
            for (const Finding& finding : watched.result.findings) {
                kinds.push_back(rawValue(finding.kind()));
            }
            EXPECT_EQ(fmt::format("{}", fmt::join(kinds, " ")), findings);
            double total = 0;
            for (const ProcessGroup& group : watched.reading.groups) {
                total += group.cpuPercent;
            }
            EXPECT_LE(total, 100.0 * static_cast<double>(watched.reading.signals.coreCount));
            EXPECT_GT(total, 20);
            const MemoryBreakdown& memory = watched.reading.memory;
            EXPECT_LE(memory.app + memory.wired + memory.compressed + memory.cached + memory.free,
                      memory.total * 103 / 100);
            EXPECT_GT(memory.used(), memory.total / 3);
        }
    }
}

// What a tester would wait for: minutes, hours and what is done about it.
TEST(Scenarios, ChangeWithTimeAndWithWhatIsDone) {
    const auto updated = makeScenario("spotlight-after-update");
    updated->machine.advance(hours(0.7));
    EXPECT_EQ(watch(*updated).result.findings.size(), 1U);
    updated->machine.advance(hours(0.1));
    EXPECT_EQ(watch(*updated).result.status, Status::quiet) << "the index is done";

    const auto stuck = makeScenario("spotlight-stuck");
    const TimePoint since = stuck->machine.now();
    stuck->machine.advance(hours(3.1));
    const Finding finding = watch(*stuck, since).result.findings.at(0);
    EXPECT_EQ(finding.severity(), Severity::high);
    EXPECT_EQ(finding.primaryFix(), FixID::rebuildSpotlightIndex);
    stuck->tools.run(
        "/usr/bin/osascript",
        {"-e", "do shell script \"/usr/bin/mdutil -E /\" with administrator privileges"});
    stuck->machine.advance(hours(1));
    EXPECT_EQ(watch(*stuck).result.status, Status::quiet) << "the rebuild has helped";

    const auto virtualMachine = makeScenario("virtual-machine");
    const Finding hog = watch(*virtualMachine).result.findings.at(0);
    EXPECT_EQ(hog.severity(), Severity::high);
    EXPECT_EQ(hog.groupID(), "/Applications/Docker.app");
    for (const auto& app : virtualMachine->workspace.runningApplications()) {
        if (app->bundleIdentifier() == "com.docker.docker") {
            app->terminate();
        }
    }
    EXPECT_EQ(watch(*virtualMachine).result.status, Status::quiet) << "its machine goes with it";

    const auto stuckApp = makeScenario("stuck-app");
    for (const auto& app : stuckApp->workspace.runningApplications()) {
        app->forceTerminate();
        EXPECT_EQ(app->isTerminated(), app->bundlePath() != "/Applications/Logic Pro.app");
    }
}

} // namespace
} // namespace pacelet::Simulated
