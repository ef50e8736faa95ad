#include "PaceletApp/ProcessesView/ListedProcess.h"
#include "tests/PaceletApp/ProcessesView/SampleGroups.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <set>

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

RC_GTEST_PROP(RowKeys, stayWithTheirProcessesAndAreNotWasted, ()) {
    const auto someRows = [] {
        std::vector<ListedProcess> rows;
        for (const int id : *rc::gen::container<std::set<int>>(rc::gen::inRange(0, 20))) {
            rows.emplace_back().id = std::to_string(id * 7 % 20);
        }
        return rows;
    };
    std::uint64_t counter = 0;
    std::vector<ListedProcess> shown = someRows();
    assignKeys(shown, {}, counter);
    std::vector<ListedProcess> next = someRows();
    std::vector<const ListedProcess*> old;
    std::set<std::string> keys;
    for (const ListedProcess& row : shown) {
        old.push_back(&row);
        keys.insert(row.key);
    }
    assignKeys(next, old, counter);
    std::set<std::string> taken;
    for (const ListedProcess& row : next) {
        const auto before = std::ranges::find(shown, row.id, &ListedProcess::id);
        // In brackets: the macro takes the expression apart, and would look behind the end.
        RC_ASSERT((before == shown.end() || before->key == row.key));
        RC_ASSERT(taken.insert(row.key).second);
    }
    keys.insert(taken.begin(), taken.end());
    RC_ASSERT(keys.size() == std::max(shown.size(), next.size()));
}

} // namespace
} // namespace pacelet
