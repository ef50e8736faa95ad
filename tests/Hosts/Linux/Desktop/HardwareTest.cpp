#include "Core/Usage/MacInfo.h"
#include "Hosts/Linux/Hardware/HardwareFacts.h"
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
        try {
            host.tools().run(tool, {});
            ADD_FAILURE() << tool << " was started";
        } catch (const LaunchError& error) {
            EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
        }
    }
}

} // namespace
} // namespace pacelet::Linux
