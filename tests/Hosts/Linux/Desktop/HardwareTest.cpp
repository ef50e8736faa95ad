#include "Core/Usage/MacInfo.h"
#include "Hosts/Linux/Hardware/HardwareFacts.h"
#include "Hosts/Linux/Hardware/SystemProfilerTool.h"
#include "Hosts/Linux/LinuxHost.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

using pacelet::testing::TemporaryFolder;
constexpr std::int64_t GiB = std::int64_t{1} << 30;

TEST(Hardware, MachinesHaveTheNameTheyAreSoldUnder) {
    struct Case {
        FirmwareNames names;
        std::string name;
    };
    for (const Case& each :
         {Case{{"XPS 13 9310\n", "XPS\n", "", "10\n"}, "XPS 13 9310"},
          Case{{"20XW0026GE\n", "ThinkPad X1 Carbon Gen 9\n", "", "10\n"},
               "ThinkPad X1 Carbon Gen 9"},
          Case{{"To Be Filled By O.E.M.", "Default string", "", "3"}, "Desktop"},
          Case{{"System Product Name", "System Name", "", "35\n"}, "Mini PC"},
          Case{{"MS-7C37", "none", "", "3"}, "MS-7C37"},
          Case{{"", "", std::string{"Raspberry Pi 4 Model B Rev 1.4\0", 31}, ""},
               "Raspberry Pi 4 Model B Rev 1.4"},
          Case{{" \t", "", "", "x"}, "Computer"}, Case{{"Bad\x01Name", "", "", ""}, "Bad?Name"}}) {
        EXPECT_EQ(machineName(each.names), each.name);
    }
}

TEST(Hardware, ProcessorsAndSizes) {
    const std::pair<std::string_view, std::string_view> processors[] = {
        {"processor\t: 0\nmodel\t\t: 140\nmodel name\t: 11th Gen Intel(R) Core(TM) i7-1185G7 @ "
         "3.00GHz\nmodel name\t: other\n",
         "11th Gen Intel Core i7-1185G7"},
        {"model name\t: Intel(R) Xeon(R) CPU E5-2680 v4 @ 2.40GHz\n", "Intel Xeon E5-2680 v4"},
        {"processor: 0\nHardware\t: BCM2711\n", "BCM2711"},
        {"cpu\t\t: POWER9\nmodel name: AMD Ryzen 7 5800X 8-Core Processor\n",
         "AMD Ryzen 7 5800X 8-Core"},
        {"model name\t:", ""},
        {"garbage", ""}};
    for (const auto& [text, name] : processors) {
        EXPECT_EQ(processorName(text), name);
    }
    const std::pair<std::int64_t, std::string> sizes[] = {{16 * GiB, "16 GB"},
                                                          {15 * GiB + 1, "16 GB"},
                                                          {GiB, "1 GB"},
                                                          {GiB - 1, "1024 MB"},
                                                          {1, "1 MB"}};
    for (const auto& [bytes, text] : sizes) {
        EXPECT_EQ(memoryText(bytes), text);
        EXPECT_GE(MacInfo::parseSize(text), bytes);
    }
}

TEST(Hardware, TheReportReadsAsTheMacs) {
    const TemporaryFolder folder;
    const std::string proc = folder.path() / "proc";
    const std::string sys = folder.path() / "sys";
    const auto info = [&] {
        const auto output = SystemProfilerTool::run({"SPHardwareDataType", "-json"}, proc, sys);
        EXPECT_EQ(output.status, 0);
        return MacInfo::parse(output.stdout, 3 * GiB);
    };
    EXPECT_EQ(info(), (MacInfo{"Computer", "Unknown chip", 3 * GiB, false}));

    folder.write("sys/class/dmi/id/product_name", "Say \"Hi\" \\ 15\n");
    folder.write("proc/cpuinfo", "model name\t: Apple look-alike\n");
    folder.write("proc/meminfo", "MemTotal:       16100000 kB\n");
    EXPECT_EQ(info(), (MacInfo{"Say \"Hi\" \\ 15", "Apple look-alike", 16 * GiB, false}));

    folder.write("sys/devices/system/memory/block_size_bytes", "40000000\n");
    for (int block = 0; block < 18; ++block) {
        folder.write("sys/devices/system/memory/memory" + std::to_string(block) + "/state",
                     "online");
    }
    EXPECT_EQ(info()->memoryBytes, 18 * GiB) << "what the kernel keeps for itself counts too";
    folder.write("sys/devices/system/memory/block_size_bytes", "ffffffffffffffff\n");
    EXPECT_EQ(info()->memoryBytes, 16 * GiB);
    EXPECT_NE(SystemProfilerTool::run({"SPHardwareDataType"}, proc, sys).status, 0);
}

TEST(Hardware, ThisMachineTellsItself) {
    LinuxHost host;
    const MacInfo info = MacInfo::read(host.tools(), host.kernel());
    EXPECT_FALSE(info.name.empty());
    EXPECT_FALSE(info.chip.empty());
    EXPECT_GE(info.memoryBytes, host.kernel().physicalMemory());
    EXPECT_LT(info.memoryBytes, 2 * host.kernel().physicalMemory() + GiB);
}

TEST(Tools, WhatThisMachineLacksFailsToStart) {
    LinuxHost host;
    for (const char* tool : {"/usr/bin/networkQuality", "/usr/bin/osascript"}) {
        EXPECT_THROW(host.tools().run(tool, {}), LaunchError) << tool;
    }
}

} // namespace
} // namespace pacelet::Linux
