#include "Core/Sampling/MemoryStats.h"
#include "Core/Sampling/SignalReader.h"
#include "tests/Support/FakeKernel.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace pacelet {
namespace {

using testing::FakeClock;
using testing::FakeKernel;

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
    kernel.capacities = VolumeCapacities{std::nullopt, 100};
    EXPECT_EQ(SignalReader::read(kernel, clock, 0).diskFreeBytes, 0);
    EXPECT_EQ(SignalReader::read(kernel, clock, 0).diskTotalBytes, 100);
}

TEST(MemoryStats, SplitsPhysicalMemory) {
    FakeKernel kernel;
    kernel.memory = 1'000'000;
    EXPECT_EQ(MemoryStats::read(kernel), (MemoryBreakdown{1'000'000, 0, 0, 0, 0, 1'000'000}))
        << "without statistics all memory is free";
    EXPECT_EQ(MemoryStats::read(kernel).used(), 0);

    kernel.statistics = VMStatistics64{1, 2, 3, 4, 5, 10};
    EXPECT_EQ(MemoryStats::read(kernel),
              (MemoryBreakdown{1'000'000, 7 * 16384, 2 * 16384, 4 * 16384, 8 * 16384, 16384}));
    kernel.statistics->purgeable_count = 4'000'000'000;
    EXPECT_EQ(MemoryStats::read(kernel).app, 0) << "more purgeable than anonymous pages";
    constexpr auto huge = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ((MemoryBreakdown{100, huge, huge, huge, 0, 0}.used()), 100);
    EXPECT_EQ((MemoryBreakdown{100, 10, 20, 30, 500, 0}.used()), 60) << "caches are not in use";
}

} // namespace
} // namespace pacelet
