#include "Core/Sampling/BusyTracker.h"
#include "Core/Sampling/CPUMeter.h"
#include "Core/Sampling/MemoryReader.h"
#include "Core/Sampling/MemoryStats.h"
#include "Core/Sampling/SamplingPolicy.h"
#include "Core/Sampling/SignalReader.h"
#include "tests/Support/FakeKernel.h"
#include "tests/Support/Processes.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace pacelet {
namespace {

using testing::FakeClock;
using testing::FakeKernel;
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
    EXPECT_EQ(cpuOf(at(10, {sample(7, "/a", 5)}), at(12, {sample(7, "/a", 5, 33)})), 0) << "idle";
    EXPECT_EQ(CPUMeter::total(std::vector{testing::usage(1, "/a", 2), testing::usage(2, "/b", 3)}),
              5);
    EXPECT_DOUBLE_EQ(
        cpuOf(at(10, {sample(7, "/a", 1), sample(7, "/a", 4)}), at(12, {sample(7, "/a", 5)})), 50)
        << "of two samples of one pid the later one stands";
}

TEST(CPUMeter, FallsBackOnPSWhereTwoSnapshotsDoNotTell) {
    const Snapshot current = at(12, {sample(7, "/a", 5, 33)});
    const std::pair<const char*, std::optional<Snapshot>> rows[] = {
        {"the first snapshot", std::nullopt},
        {"a new process", at(10, {})},
        {"a reused pid", at(10, {sample(7, "/other", 1)})},
        {"a counter that ran backwards", at(10, {sample(7, "/a", 5.01)})},
        {"no time between", at(12, {sample(7, "/a", 1)})},
        {"the clock was set back", at(13, {sample(7, "/a", 1)})},
    };
    for (const auto& [name, before] : rows) {
        EXPECT_DOUBLE_EQ(cpuOf(before, current), 33) << name;
    }
    EXPECT_DOUBLE_EQ(cpuOf(std::nullopt, at(1, {sample(7, "/a", 1, -4)})), 0);
}

TEST(CPUMeter, AsksForFootprintsOfOwnProcessesOnly) {
    FakeKernel kernel;
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

TEST(SystemSignals, MapsRawValues) {
    EXPECT_EQ(SystemSignals::cpuLoad(800, 8), 100);
    EXPECT_EQ(SystemSignals::cpuLoad(1000, 8), 100);
    EXPECT_EQ(SystemSignals::cpuLoad(-5, 8), 0);
    EXPECT_EQ(SystemSignals::cpuLoad(50, 0), 50);
    const std::vector<Pressure> levels{Pressure::normal, Pressure::normal,   Pressure::elevated,
                                       Pressure::normal, Pressure::critical, Pressure::normal};
    for (std::size_t level = 0; level < levels.size(); ++level) {
        EXPECT_EQ(pressureFromSysctlLevel(static_cast<std::int32_t>(level)), levels[level]);
    }
    EXPECT_EQ(thermalFromState(2), Thermal::hot);
    EXPECT_EQ(thermalFromState(4), Thermal::normal);
    EXPECT_EQ(thermalFromState(-1), Thermal::normal);
    EXPECT_GT(Thermal::hot, Thermal::warm);
    EXPECT_EQ(label(Thermal::veryHot), "Very hot");
}

TEST(SignalReader, ReadsEverySource) {
    FakeKernel kernel;
    FakeClock clock;
    kernel.set("kern.memorystatus_vm_pressure_level", std::int32_t{4});
    kernel.set("vm.swapusage", SwapUsageRecord{10, 4, 6, 16384, 1});
    kernel.set("kern.boottime", BootTimeRecord{1'799'999'000, 999'999});
    kernel.capacities = VolumeCapacities{40, 100};
    kernel.thermal = 3;
    const SystemSignals expected{50,  8,    Pressure::critical, 6, Thermal::veryHot, 40,
                                 100, 1000, kernel.memory};
    EXPECT_EQ(SignalReader::read(kernel, clock, 400), expected);
}

TEST(SignalReader, DegradesToDocumentedValues) {
    FakeKernel kernel;
    FakeClock clock;
    kernel.uptime = 77.5;
    kernel.thermal = 9;
    kernel.set("vm.swapusage", std::int32_t{5}); // too short to be the record
    const SystemSignals bare = SignalReader::read(kernel, clock, 0);
    EXPECT_EQ(bare, (SystemSignals{0, 8, Pressure::normal, 0, Thermal::normal, 0, 0, 77.5,
                                   kernel.memory}));
    kernel.capacities = VolumeCapacities{};
    EXPECT_EQ(SignalReader::read(kernel, clock, 0), bare);
}

TEST(MemoryStats, SplitsPhysicalMemory) {
    FakeKernel kernel;
    kernel.memory = 1'000'000;
    EXPECT_EQ(MemoryStats::read(kernel), (MemoryBreakdown{1'000'000, 0, 0, 0, 0, 1'000'000}))
        << "without statistics all memory is free";
    EXPECT_EQ(MemoryStats::read(kernel).used(), 0);

    kernel.statistics = VMStatistics64{1, 2, 3, 4, 5, 10};
    constexpr std::int64_t page = 16384;
    EXPECT_EQ(MemoryStats::read(kernel),
              (MemoryBreakdown{1'000'000, 7 * page, 2 * page, 4 * page, 8 * page, page}));
    kernel.statistics->purgeable_count = 4'000'000'000;
    EXPECT_EQ(MemoryStats::read(kernel).app, 0) << "more purgeable than anonymous pages";
    constexpr auto huge = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ((MemoryBreakdown{100, huge, huge, huge, 0, 0}.used()), 100);
    EXPECT_EQ((MemoryBreakdown{100, 10, 20, 30, 500, 0}.used()), 60) << "caches are not in use";
}

} // namespace
} // namespace pacelet
