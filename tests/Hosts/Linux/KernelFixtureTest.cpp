#include "Hosts/Linux/LinuxKernel.h"
#include "Hosts/Linux/Proc/LiveProcesses.h"
#include "Hosts/Linux/SystemClock.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

using pacelet::testing::TemporaryFolder;

TEST(LinuxKernel, ReadsAMachineThatTellsEverything) {
    const TemporaryFolder root;
    root.write("proc/meminfo", "MemTotal: 4000 kB\nMemFree: 1000 kB\nCached: 400 kB\n"
                               "AnonPages: 800 kB\nSwapTotal: 10 kB\nSwapFree: 4 kB\n"
                               "MemAvailable: 300 kB\n");
    root.write("proc/pressure/memory", "some avg10=55.00\nfull avg10=12.00\n");
    root.write("proc/stat", "cpu 1 2\nintr " + std::string(20'000, '1') + "\nbtime 1700000000\n");
    root.write("proc/77/status", "Name:\tx\nRssAnon:\t12 kB\n");
    root.write("run/udev/data/c1:1", "");
    root.write("sys/class/dmi/id/product_name", "Laptop 9\n");
    root.write("sys/firmware/acpi/platform_profile", "low-power\n");
    const auto zone = [&](int number, const std::string& type, int temperature) {
        const std::string folder = "sys/class/thermal/thermal_zone" + std::to_string(number) + '/';
        root.write(folder + "type", type + '\n');
        root.write(folder + "temp", std::to_string(temperature) + '\n');
        root.write(folder + "trip_point_0_type", "critical\n");
        root.write(folder + "trip_point_0_temp", "105000\n");
        root.write(folder + "trip_point_1_type", "passive\n");
        root.write(folder + "trip_point_1_temp", "80000\n");
    };
    zone(0, "x86_pkg_temp", 40'000);
    zone(1, "cpu-thermal", 85'000);
    zone(2, "battery", 110'000);

    SystemClock clock;
    LinuxKernel kernel{(root.path() / "proc").string(), (root.path() / "sys").string(),
                       (root.path() / "run").string(), clock};
    EXPECT_EQ(readSysctl<std::int32_t>(kernel, "kern.memorystatus_vm_pressure_level"), 4);
    EXPECT_EQ(readSysctl<BootTimeRecord>(kernel, "kern.boottime")->tv_sec, 1700000000);
    EXPECT_EQ(readSysctl<SwapUsageRecord>(kernel, "vm.swapusage")->xsu_used, 6U * 1024);
    EXPECT_EQ(kernel.availableMemory(), 300 * 1024);
    EXPECT_EQ(kernel.physicalMemory(), 256 << 20);
    root.write("run/udev/data/+dmi:id",
               "N:x\nE:MEMORY_DEVICE_0_SIZE=8388608\n"
               "E:MEMORY_DEVICE_0_VOLATILE_SIZE=1\n"
               "E:MEMORY_DEVICE_11_SIZE=4194304\nE:MEMORY_DEVICE_2_SIZE=-5\n");
    EXPECT_EQ(kernel.physicalMemory(), 12 << 20) << "what the firmware says is built in";
    EXPECT_EQ(kernel.hostStatistics64()->wire_count,
              static_cast<std::uint32_t>(((12 << 20) - 2200 * 1024) / kernel.pageSize()));
    EXPECT_EQ(kernel.physFootprint(77), 12 * 1024);
    EXPECT_EQ(kernel.physFootprint(78), std::nullopt);
    EXPECT_EQ(kernel.thermalState(), 1) << "the hottest processor zone counts, a battery does not";
    EXPECT_TRUE(kernel.isLowPowerModeEnabled());
    std::array<char, 64> model{};
    EXPECT_EQ(kernel.sysctlbyname("hw.model", std::as_writable_bytes(std::span{model})), 9U);
    EXPECT_STREQ(model.data(), "Laptop 9");
    std::array<char, 8> small{};
    EXPECT_FALSE(kernel.sysctlbyname("hw.model", std::as_writable_bytes(std::span{small})))
        << "it does not fit";
}

TEST(LiveProcesses, CountMemoryAnewWhereTheTableTellsOfAChange) {
    const TemporaryFolder root;
    const auto write = [&](int faults, int pages, const std::string& anonymous) {
        root.write("proc/77/stat", "77 (x) S 1 1 1 0 -1 0 " + std::to_string(faults) +
                                       " 0 0 0 5 5 0 0 20 0 1 0 100 4096 " + std::to_string(pages) +
                                       " 0 1 2 3\n");
        root.write("proc/77/status", "PPid:\t9\nRssAnon:\t" + anonymous + " kB\n");
    };
    write(5, 10, "12");
    LiveProcesses processes{(root.path() / "proc").string(), {}};
    const auto bytes = [&] {
        processes.read(Seconds{100});
        const auto counted = processes.memory(77);
        return counted ? counted->memory.anonymous / 1024 : -1;
    };
    EXPECT_EQ(bytes(), 12);
    write(5, 10, "13");
    EXPECT_EQ(bytes(), 12) << "nothing tells of a change";
    write(6, 10, "14");
    EXPECT_EQ(bytes(), 14) << "it touched a page";
    write(6, 9, "15");
    EXPECT_EQ(bytes(), 15) << "it gave a page back";
    EXPECT_EQ(processes.memory(78), std::nullopt);
}

TEST(LinuxKernel, InventsNothingOnAMachineThatTellsNothing) {
    const TemporaryFolder root;
    SystemClock clock;
    LinuxKernel kernel{(root.path() / "proc").string(), (root.path() / "sys").string(),
                       (root.path() / "run").string(), clock};
    std::array<std::byte, 64> record{};
    for (const char* name : {"kern.memorystatus_vm_pressure_level", "vm.swapusage", "kern.boottime",
                             "hw.model", "no.such.name"}) {
        EXPECT_FALSE(kernel.sysctlbyname(name, record)) << name;
    }
    EXPECT_FALSE(kernel.hostStatistics64());
    EXPECT_FALSE(kernel.availableMemory());
    EXPECT_EQ(kernel.thermalState(), 0);
    EXPECT_FALSE(kernel.isLowPowerModeEnabled());
    EXPECT_EQ(kernel.physicalMemory(), 0);
    EXPECT_FALSE(kernel.volumeCapacities("/no/such/folder"));
}

} // namespace
} // namespace pacelet::Linux
