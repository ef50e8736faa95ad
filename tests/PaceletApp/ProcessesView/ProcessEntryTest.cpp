#include "PaceletApp/ProcessesView/ChipItem.h"
#include "tests/PaceletApp/ProcessesView/SampleGroups.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace pacelet {
namespace {

SampleGroups desk() {
    SampleGroups sample;
    sample.add("Chrome", 40, 900, Verdict::safe, {"Chrome Helper (GPU)", "chrome_crashpad"});
    sample.add("mds_stores", 90, 20, Verdict::leave);
    sample.add("tool", 40, 900);
    sample.add("ÄRGER", 0, 5);
    sample.add("İstanbul", 0, 4);
    sample.explanations["pid:2"].title = "Spotlight Index";
    return sample;
}

TEST(ProcessList, findsNamesHelpersAndTitlesInAnyCase) {
    struct Case {
        const char* search;
        const char* shown;
    };
    const Case cases[] = {
        {"", "kernel_task mds_stores Chrome tool ÄRGER İstanbul"},
        {"   ", "kernel_task mds_stores Chrome tool ÄRGER İstanbul"},
        {"chrome", "Chrome"},
        {"  CHROME\t", "Chrome"},
        {"(gpu)", "Chrome"},
        {"crashpad", "Chrome"},
        {"spotlight i", "mds_stores"},
        {"ärger", "ÄRGER"},
        {"i̇stanbul", "İstanbul"},
        {"KERNEL", "kernel_task"},
        {"o", "mds_stores Chrome tool"},
        {"mds  stores", ""},
        {".*", ""},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(desk().shown({QString::fromUtf8(each.search), {}, false}), each.shown)
            << each.search;
    }
}

TEST(ProcessList, sortsTheKernelFirstAndEqualRowsAsTheyCame) {
    SampleGroups sample = desk();
    EXPECT_EQ(sample.shown({{}, {}, true}), "kernel_task Chrome tool mds_stores ÄRGER İstanbul");
    EXPECT_EQ(sample.shown({{}, Verdict::safe, true}), "Chrome");
    EXPECT_EQ(sample.shown({QStringLiteral("mds"), Verdict::safe, false}), "");
    EXPECT_EQ(SampleGroups{}.shown({}), "kernel_task");
    // A real process of the kernel's name stands with the others, unless it has the row's own id.
    sample.add("kernel_task", 50);
    EXPECT_EQ(sample.shown({{}, {}, false}),
              "kernel_task mds_stores kernel_task Chrome tool ÄRGER İstanbul");
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
