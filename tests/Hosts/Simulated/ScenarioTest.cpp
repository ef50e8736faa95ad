#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Diagnosis/MachineReading.h"
#include "Hosts/Simulated/SimulatedMac.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace pacelet::Simulated {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAreArray;
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

struct Expected {
    std::string scenario;
    std::vector<FindingKind> findings;
};

void PrintTo(const Expected& expected, std::ostream* out) {
    *out << expected.scenario;
}

class EveryScenario : public ::testing::TestWithParam<Expected> {};

TEST_P(EveryScenario, IsABelievableMachineWithItsFindings) {
    for (const std::uint64_t seed : {1U, 2U, 77U}) {
        const auto mac = makeScenario(GetParam().scenario, seed);
        ASSERT_NE(mac, nullptr);
        const Watched watched = watch(*mac);
        EXPECT_THAT(watched.reading.snapshot.processes.size(), AllOf(Ge(250U), Le(600U)));
        std::vector<FindingKind> kinds;
        double total = 0;
        for (const Finding& finding : watched.result.findings) {
            kinds.push_back(finding.kind());
        }
        for (const ProcessGroup& group : watched.reading.groups) {
            total += group.cpuPercent;
        }
        EXPECT_THAT(kinds, ElementsAreArray(GetParam().findings)) << "seed " << seed;
        EXPECT_LE(total, 100.0 * static_cast<double>(watched.reading.signals.coreCount));
        EXPECT_GT(total, 20);
        const MemoryBreakdown& memory = watched.reading.memory;
        EXPECT_LE(memory.app + memory.wired + memory.compressed + memory.cached + memory.free,
                  memory.total * 103 / 100);
        EXPECT_GT(memory.used(), memory.total / 3);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Scenarios, EveryScenario,
    ::testing::Values(Expected{"quiet", {}},
                      Expected{"spotlight-after-update", {FindingKind::spotlight}},
                      Expected{"spotlight-stuck", {FindingKind::spotlight}},
                      Expected{"chrome-tabs", {FindingKind::browser}},
                      Expected{"virtual-machine", {FindingKind::cpuHog}},
                      Expected{"out-of-memory", {FindingKind::memory}},
                      Expected{"hot", {FindingKind::heat, FindingKind::cpuHog}},
                      Expected{"window-server", {FindingKind::windowServer}},
                      Expected{"full-disk", {FindingKind::lowDisk}},
                      Expected{"low-power", {FindingKind::lowPower}},
                      Expected{"stuck-app", {FindingKind::cpuHog}}, Expected{"offline", {}},
                      Expected{"slow-line", {}}, Expected{"fresh-install", {}},
                      Expected{"intel-history", {FindingKind::memory, FindingKind::longUptime}}),
    [](const auto& row) {
        std::string name = row.param.scenario;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });

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
}

} // namespace
} // namespace pacelet::Simulated
