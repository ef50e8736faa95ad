#include "Core/Sampling/MemoryStats.h"
#include "Core/Usage/MacInfo.h"
#include "Hosts/Linux/Hardware/HardwareFacts.h"
#include "Hosts/Linux/Hardware/InstalledMemory.h"
#include "Hosts/Linux/Hardware/SystemProfilerTool.h"
#include "Hosts/Linux/LinuxHost.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

using pacelet::testing::rows;
using pacelet::testing::TemporaryFolder;
constexpr std::int64_t GiB = std::int64_t{1} << 30;

TEST(Hardware, NamesAndSizes) {
    for (const auto& [product, version, device, chassis, name] :
         rows<5>("Desktop", "names of machines")) {
        EXPECT_EQ(machineName({product, version, device, chassis}), name);
    }
    for (const auto& [text, name] : rows<2>("Desktop", "names of processors")) {
        EXPECT_EQ(processorName(text), name);
    }
    const std::pair<std::int64_t, std::string> sizes[] = {
        {16 * GiB, "16 GB"}, {GiB + GiB / 2, "1536 MB"}, {1, "1 MB"}};
    for (const auto& [bytes, text] : sizes) {
        EXPECT_EQ(memoryText(bytes), text);
        EXPECT_GE(MacInfo::parseSize(text), bytes);
    }
    // What kernels leave of memory that is sold in these sizes, in hundredths of a GB.
    const std::pair<std::int64_t, std::int64_t> managed[] = {
        {6'262, 64}, {2'354, 24},   {1'538, 16},   {766, 8},        {374, 4},
        {3'125, 32}, {12'553, 128}, {18'840, 192}, {100'550, 1024}, {1'600, 16},
        {970, 10},   {92, 1},       {0, 0}};
    for (const auto& [hundredths, gigabytes] : managed) {
        EXPECT_EQ(installedMemory(hundredths * GiB / 100, ""), gigabytes * GiB) << hundredths;
    }
}

TEST(Hardware, TheReportReadsAsTheMacs) {
    const TemporaryFolder folder;
    const std::string proc = folder.path() / "proc";
    const std::string sys = folder.path() / "sys";
    std::int64_t memory = 0;
    const auto info = [&] {
        const auto output =
            SystemProfilerTool::run({"SPHardwareDataType", "-json"}, proc, sys, memory);
        EXPECT_EQ(output.status, 0);
        return MacInfo::parse(output.stdout, 3 * GiB);
    };
    EXPECT_EQ(info(), (MacInfo{"Computer", "Unknown chip", 3 * GiB, false}));

    folder.write("sys/class/dmi/id/product_name", "Say \"Hi\" \\ 15\n");
    folder.write("proc/cpuinfo", "model name\t: Apple look-alike\n");
    memory = 16 * GiB;
    EXPECT_EQ(info(), (MacInfo{"Say \"Hi\" \\ 15", "Apple look-alike", 16 * GiB, false}));
    EXPECT_NE(SystemProfilerTool::run({"SPHardwareDataType"}, proc, sys, memory).status, 0);
}

TEST(Hardware, ThisMachineTellsItself) {
    LinuxHost host;
    const MacInfo info = MacInfo::read(host.tools(), host.kernel());
    EXPECT_FALSE(info.name.empty());
    EXPECT_FALSE(info.chip.empty());
    EXPECT_EQ(info.memoryBytes, host.kernel().physicalMemory()) << "one figure on all screens";
    EXPECT_EQ(info.memoryBytes, MemoryStats::read(host.kernel()).total);
    EXPECT_FALSE(info.isMac);
}

} // namespace
} // namespace pacelet::Linux
