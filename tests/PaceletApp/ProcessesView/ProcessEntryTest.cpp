#include "PaceletApp/ProcessesView/ChipItem.h"
#include "PaceletApp/ProcessesView/ListedProcess.h"
#include "PaceletApp/ProcessesView/TableGeometry.h"
#include "tests/PaceletApp/ProcessesView/SampleGroups.h"
#include "tests/PaceletApp/Support/Table.h"
#include "tests/PaceletApp/Support/ToneText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace pacelet {
namespace {

SampleGroups desk() {
    SampleGroups sample;
    sample.add("Chrome", 40, 900, Verdict::safe, {"Chrome Helper (GPU)", "chrome_crashpad"});
    sample.add("mds_stores", 90, 20, Verdict::leave);
    sample.add("tool", 40, 900).displayName = "Toolbox";
    sample.add("ÄRGER", 0, 5);
    sample.add("İstanbul", 0, 4);
    sample.explanations["pid:2"].title = "Spotlight Index";
    return sample;
}

TEST(ProcessList, findsNamesHelpersAndTitlesInAnyCase) {
    const Table<const char*, const char*> cases = {
        {"  ", "kernel_task mds_stores Chrome Toolbox ÄRGER İstanbul"},
        {"  CHROME\t", "Chrome"},
        {"(gpu)", "Chrome"},
        {"spotlight i", "mds_stores"},
        {"ärger", "ÄRGER"},
        {"i̇stanbul", "İstanbul"},
        {"KERNEL", "kernel_task"},
        {"o", "mds_stores Chrome Toolbox"},
        {"box", "Toolbox"},
        {"mds  stores", ""},
        {".*", ""},
    };
    for (const auto& [search, shown] : cases) {
        EXPECT_EQ(desk().shown({QString::fromUtf8(search), {}, false}), shown) << search;
    }
}

TEST(ProcessList, sortsTheKernelFirstAndEqualRowsAsTheyCame) {
    SampleGroups sample = desk();
    EXPECT_EQ(sample.shown({{}, {}, true}), "kernel_task Chrome Toolbox mds_stores ÄRGER İstanbul");
    EXPECT_EQ(sample.shown({{}, Verdict::safe, true}), "Chrome");
    EXPECT_EQ(sample.shown({QStringLiteral("mds"), Verdict::safe, false}), "");
    EXPECT_EQ(SampleGroups{}.shown({}), "kernel_task");
    // A real process of the kernel's name stands with the others, unless it has the row's own id.
    sample.add("kernel_task", 50);
    EXPECT_EQ(sample.shown({{}, {}, false}),
              "kernel_task mds_stores kernel_task Chrome Toolbox ÄRGER İstanbul");
    sample.groups.back().id = kernelID;
    EXPECT_EQ(sample.shown({QStringLiteral("kernel"), {}, true}), "kernel_task kernel_task");
}

TEST(ProcessList, tellsWhyItIsEmpty) {
    EXPECT_EQ(emptyListText({QStringLiteral(" no\"pe "), Verdict::safe, true}),
              "No process matches \" no\"pe \".");
    EXPECT_EQ(emptyListText({QStringLiteral("  "), Verdict::leave, false}),
              "Nothing here right now.");
}

TEST(Chips, countAllRowsWhateverIsShown) {
    const SampleGroups sample = desk();
    std::string chips;
    for (const ChipItem& chip : chipItems(sample.entries(), Verdict::review)) {
        chips += chip.label.toStdString() + (chip.chosen ? "! " : " ") + chip.id + "; ";
    }
    EXPECT_EQ(chips, "All 6 ; Safe to quit 1 safe; Review 4! review; Leave it 1 leave; ");
    EXPECT_TRUE(chipItems({}, std::nullopt).front().chosen);
}

TEST(ListedProcess, theKernelTellsOfHeatAndOfNoCost) {
    const Table<Thermal, const char*> cases = {
        {Thermal::normal, "heat ok|green|Not cooling right now"},
        {Thermal::warm, "Warm|amber|Cooling your Mac"},
        {Thermal::hot, "Hot|red|Cooling your Mac"},
        {Thermal::veryHot, "Very hot|red|Cooling your Mac"},
    };
    const ProcessEntry entry{kernelGroup(), nullptr, Verdict::review};
    for (const auto& [thermal, words] : cases) {
        const ListedProcess row = listedProcess(entry, thermal);
        EXPECT_EQ(QStringList({row.cpu, toneText(row.tone), row.note}).join(u'|'), words);
        EXPECT_EQ(
            QStringList({row.name, row.subtitle, row.memory, row.verdict, row.symbol}).join(u'|'),
            "kernel_task|Kernel (heat control)|—|leave|thermometer.medium");
        EXPECT_TRUE(row.kernel && row.fix == FixLook{} && row.appPath.isEmpty());
    }
    SampleGroups sample;
    sample.add("kernel_task", 12.5, 3 << 20);
    const ListedProcess real = listedProcess(sample.entries()[1], Thermal::hot);
    EXPECT_FALSE(real.kernel);
    EXPECT_EQ(real.cpu + toneText(real.tone), "12.5%");
}

TEST(ListedProcess, keepsItsRowOfTheScreenAsLongAsItIsListed) {
    std::vector<ListedProcess> shown(3);
    std::uint64_t counter = 3;
    for (const int place : {0, 1, 2}) {
        shown[place].id = std::string{"abc"[place]};
        shown[place].rowKey = std::to_string(place);
    }
    const std::vector<const ListedProcess*> before{&shown[0], &shown[1], &shown[2]};
    const Table<std::string, const char*> cases = {
        {"cab", "201"}, {"dca", "120"}, {"aade", "0123"}, {"bcde", "1204"}};
    for (const auto& [ids, keys] : cases) {
        std::vector<ListedProcess> next(ids.size());
        for (std::size_t row = 0; row < ids.size(); ++row) {
            next[row].id = ids[row];
        }
        assignKeys(next, before, counter);
        std::string given;
        for (const ListedProcess& row : next) {
            given += row.rowKey;
        }
        EXPECT_EQ(given, keys) << ids;
    }
}

TEST(TableGeometry, knowsItsRowsAroundTheOpenOne) {
    const TableGeometry table{.count = 4, .open = 1, .rowHeight = 10, .panelHeight = 50};
    const Table<double, std::size_t> places = {{-5, 0}, {9, 0},  {10, 1}, {69, 1},
                                               {70, 2}, {80, 3}, {90, 3}, {500, 3}};
    for (const auto& [y, row] : places) {
        EXPECT_EQ(table.rowAt(y), row) << y;
    }
    EXPECT_EQ(table.rowsBetween(0, 5, 0), (TableGeometry::Range{0, 1}));
    EXPECT_EQ(table.rowsBetween(75, 5, 1), (TableGeometry::Range{1, 4}));
}

RC_GTEST_PROP(ProcessList, isTheMatchingPartOfAllRowsInOrder, ()) {
    SampleGroups sample;
    const auto count = *rc::gen::inRange(0, 40);
    for (int number = 0; number < count; ++number) {
        sample.add(*rc::gen::element<std::string>("mds", "Mail", "Safari", "x"),
                   *rc::gen::inRange(0, 4), *rc::gen::inRange(0, 4),
                   *rc::gen::element(Verdict::safe, Verdict::review, Verdict::leave));
    }
    const ProcessQuery query{
        *rc::gen::element(QStringLiteral("M"), QStringLiteral(" a"), QString{}),
        *rc::gen::element<std::optional<Verdict>>(std::nullopt, Verdict::safe, Verdict::review),
        *rc::gen::arbitrary<bool>()};
    const auto entries = sample.entries();
    const auto shown = visibleEntries(entries, query);
    const auto wanted = std::ranges::count_if(entries, [&](const ProcessEntry& entry) {
        return (!query.verdict || entry.verdict == query.verdict) &&
               QString::fromStdString(entry.group->displayName)
                   .contains(query.search.trimmed(), Qt::CaseInsensitive);
    });
    RC_ASSERT(static_cast<std::ptrdiff_t>(shown.size()) == wanted);
    for (std::size_t row = 1; row < shown.size(); ++row) {
        const ProcessGroup& upper = *shown[row - 1].group;
        const ProcessGroup& lower = *shown[row].group;
        const auto figure = [&](const ProcessGroup& group) {
            return query.byMemory ? static_cast<double>(group.memoryBytes) : group.cpuPercent;
        };
        RC_ASSERT(!shown[row].isKernel());
        RC_ASSERT(shown[row - 1].isKernel() || figure(upper) > figure(lower) ||
                  (figure(upper) == figure(lower) && &upper < &lower));
    }
}

} // namespace
} // namespace pacelet
