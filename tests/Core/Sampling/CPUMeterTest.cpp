#include "Core/Sampling/CPUMeter.h"

#include "Core/Sampling/BusyTracker.h"
#include "Core/Sampling/MemoryReader.h"
#include "Core/Sampling/SamplingPolicy.h"
#include "tests/Support/FakeKernel.h"
#include "tests/Support/Processes.h"

#include <gtest/gtest.h>
#include <vector>

namespace pacelet {
namespace {

using testing::sample;

std::optional<std::int64_t> noFootprint(std::int32_t) {
    return std::nullopt;
}

Snapshot at(double seconds, std::vector<ProcessSample> processes) {
    return {fromUnixTime(seconds), std::move(processes)};
}

double cpuOf(const std::optional<Snapshot>& previous, const Snapshot& current) {
    return CPUMeter::usage(previous, current, noFootprint).front().cpuPercent;
}

TEST(CPUMeter, DividesCPUTimeByWallTime) {
    EXPECT_DOUBLE_EQ(cpuOf(at(10, {sample(7, "/a", 5.0)}), at(12, {sample(7, "/a", 5.5)})), 25);
    EXPECT_DOUBLE_EQ(cpuOf(at(10, {sample(7, "/a", 5)}), at(13, {sample(7, "/a", 11)})), 200)
        << "no clamp from above";
    EXPECT_DOUBLE_EQ(
        cpuOf(at(10, {sample(7, "/a", 1), sample(7, "/a", 4)}), at(12, {sample(7, "/a", 5)})), 50)
        << "of two samples of one pid the later one stands";
}

TEST(CPUMeter, FallsBackOnPSWhereTwoSnapshotsDoNotTell) {
    const Snapshot current = at(12, {sample(7, "/a", 5, 33)});
    const std::vector<std::optional<Snapshot>> previous{
        std::nullopt,                     // the first snapshot
        at(10, {}),                       // a new process
        at(10, {sample(7, "/other", 1)}), // a reused pid
        at(10, {sample(7, "/a", 5.01)}),  // a counter that ran backwards
        at(12, {sample(7, "/a", 1)}),     // no time between
        at(13, {sample(7, "/a", 1)}),     // the clock was set back
    };
    for (const auto& before : previous) {
        EXPECT_DOUBLE_EQ(cpuOf(before, current), 33);
    }
    EXPECT_DOUBLE_EQ(cpuOf(std::nullopt, at(1, {sample(7, "/a", 1, -4)})), 0);
}

TEST(CPUMeter, AsksForFootprintsOfOwnProcessesOnly) {
    testing::FakeKernel kernel;
    kernel.footprints[7] = 5000;
    ProcessSample mine = sample(7, "/a", 0, 0, 2048);
    ProcessSample vanished = sample(8, "/b", 0, 0, 2048);
    ProcessSample foreign = sample(9, "/c", 0, 0, 4096);
    foreign.uid = 0;
    const Snapshot current = at(1, {mine, vanished, foreign});
    const auto usages = CPUMeter::usage(std::nullopt, current,
                                        MemoryReader::ownProcesses(kernel, current, testing::me));
    EXPECT_EQ(usages[0].memoryBytes, 5000);
    EXPECT_EQ(usages[1].memoryBytes, 2048);
    EXPECT_EQ(usages[2].memoryBytes, 4096);
    EXPECT_EQ(kernel.footprintCalls, (std::vector<std::int32_t>{7, 8}));
    EXPECT_EQ(usages[2], (ProcessUsage{9, 1, 0, "ann", "/c", "c", 0, 4096}));
}

TEST(SamplingPolicy, LooksOftenOnlyWhileSomebodyWatches) {
    using SamplingPolicy::interval;
    EXPECT_EQ(interval(true, false, true), Seconds{3});
    EXPECT_EQ(interval(false, true, true), Seconds{3});
    EXPECT_EQ(interval(false, false, false), Seconds{30});
    EXPECT_EQ(interval(false, false, true), Seconds{60});
}

TEST(BusyTracker, KeepsTheStartOfASpell) {
    BusyTracker tracker;
    EXPECT_EQ(tracker.update(49.9, fromUnixTime(1)), std::nullopt);
    EXPECT_EQ(tracker.update(50.0, fromUnixTime(2)), fromUnixTime(2));
    EXPECT_EQ(tracker.update(80.0, fromUnixTime(3)), fromUnixTime(2));
    EXPECT_EQ(tracker.update(49.9, fromUnixTime(4)), std::nullopt);
    EXPECT_EQ(tracker.update(60.0, fromUnixTime(5)), fromUnixTime(5));
}

} // namespace
} // namespace pacelet
