#include "PaceletApp/ProcessesView/ListedProcess.h"
#include "tests/PaceletApp/ProcessesView/SampleGroups.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

TEST(ListedProcess, theKernelTellsOfHeatAndOfNoCost) {
    struct Case {
        Thermal thermal;
        const char* words;
    };
    const Case cases[] = {
        {Thermal::normal, "heat ok|green|Not cooling right now"},
        {Thermal::warm, "Warm|amber|Cooling your Mac"},
        {Thermal::hot, "Hot|red|Cooling your Mac"},
        {Thermal::veryHot, "Very hot|red|Cooling your Mac"},
    };
    const ProcessEntry entry{&kernelGroup(), nullptr, Verdict::review};
    for (const Case& each : cases) {
        const ListedProcess row = listedProcess(entry, each.thermal);
        EXPECT_EQ(QStringList({row.cpu, row.tone, row.note}).join(u'|'), each.words);
        EXPECT_EQ(
            QStringList({row.name, row.subtitle, row.memory, row.verdict, row.symbol}).join(u'|'),
            "kernel_task|Kernel (heat control)|—|leave|thermometer.medium");
        EXPECT_TRUE(row.kernel && row.fix == FixLook{} && row.appPath.isEmpty());
    }
    SampleGroups sample;
    sample.add("kernel_task", 12.5, 3 << 20);
    const ListedProcess real = listedProcess(sample.entries()[1], Thermal::hot);
    EXPECT_FALSE(real.kernel);
    EXPECT_EQ(real.cpu + real.tone, "12.5%");
}

} // namespace
} // namespace pacelet
