#include "Core/Usage/UpgradeAdvisor.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

using namespace UpgradeAdvisor;

constexpr std::int64_t gigabyte = std::int64_t{1} << 30;

/// So many quiet minutes from `first` on.
std::vector<MinuteRecord> quiet(std::size_t count, std::int64_t first) {
    std::vector<MinuteRecord> records(count);
    for (std::size_t index = 0; index < count; ++index) {
        records[index].t = first + static_cast<std::int64_t>(index);
    }
    return records;
}

/// A day's worth of minutes on two days, the first `count` of them changed.
template<typename Change>
std::vector<MinuteRecord> withChanged(std::size_t count, Change&& change) {
    std::vector<MinuteRecord> records = quiet(1440, 720);
    for (std::size_t index = 0; index < count; ++index) {
        change(records[index]);
    }
    return records;
}

TEST(UpgradeAdvisor, AdvisesTwiceTheMemoryInSizesThatAreSold) {
    struct Row {
        std::int64_t from;
        std::int64_t to;
        std::int64_t advised;
    };
    for (const Row& row : {Row{-3, 8, 16}, Row{9, 12, 24}, Row{13, 16, 32}, Row{17, 18, 36},
                           Row{19, 24, 48}, Row{25, 32, 64}, Row{33, 48, 96}, Row{49, 64, 128},
                           Row{65, 96, 192}, Row{97, 600, 256}}) {
        for (std::int64_t current = row.from; current <= row.to; ++current) {
            EXPECT_EQ(recommendedMemoryGB(current), row.advised) << current;
        }
    }
}

TEST(UpgradeAdvisor, WantsADayOfMinutesOnTwoDays) {
    auto threeDays = quiet(1437, 0);
    threeDays.push_back({.t = 1440});
    threeDays.push_back({.t = 2880});
    EXPECT_EQ(evaluate(threeDays, gigabyte, 1), UpgradeVerdict{NotEnoughData{23}});
    EXPECT_EQ(evaluate(std::vector<MinuteRecord>(2000), gigabyte, 0),
              UpgradeVerdict{NotEnoughData{33}});
    EXPECT_EQ(evaluate(quiet(1440, 1), gigabyte, 1), UpgradeVerdict{Healthy{24}});
    EXPECT_EQ(evaluate(quiet(1440, 1440), gigabyte, 1), UpgradeVerdict{NotEnoughData{24}});
    const UpgradeVerdict none = evaluate({}, gigabyte, 1);
    EXPECT_EQ(none, UpgradeVerdict{NotEnoughData{0}});
    EXPECT_EQ(hoursMeasured(none), 0);
}

TEST(UpgradeAdvisor, NamesABottleneckFromItsThresholdOn) {
    const auto press = [](MinuteRecord& each) { each.pressure = 1; };
    const auto load = [](MinuteRecord& each) { each.cpu = 80; };
    const auto spike = [](MinuteRecord& each) {
        each.cpu = 79.9;
        each.cpuMax = 100;
    };
    const auto swap = [](MinuteRecord& each) { each.swap = 4 * gigabyte; };
    const auto lessSwap = [](MinuteRecord& each) { each.swap = 4 * gigabyte - 1; };
    const UpgradeVerdict healthy = Healthy{24};
    const auto only = [](Bottleneck bottleneck) -> UpgradeVerdict {
        return Bottlenecks{{bottleneck}, 24};
    };
    struct Case {
        const char* name;
        std::vector<MinuteRecord> records;
        std::int64_t memory;
        double diskFree;
        UpgradeVerdict verdict;
    };
    const std::vector<Case> cases{
        {"pressed often", withChanged(216, press), 8 * gigabyte, 1,
         only(MemoryBottleneck{16, 0.15})},
        {"pressed less", withChanged(215, press), 8 * gigabyte, 1, healthy},
        {"swapping half the time", withChanged(720, swap), 16 * gigabyte, 1,
         only(MemoryBottleneck{32, 0})},
        {"swapping less", withChanged(719, swap), 16 * gigabyte, 1, healthy},
        {"swapping a byte less", withChanged(720, lessSwap), 16 * gigabyte, 1, healthy},
        {"no larger size is sold", withChanged(1440, press), 256 * gigabyte, 1,
         only(MemoryBottleneck{256, 1})},
        {"a size between two", withChanged(1440, press), 17 * gigabyte - 1, 1,
         only(MemoryBottleneck{32, 1})},
        {"loaded often", withChanged(288, load), gigabyte, 1, only(CPUBottleneck{0.2})},
        {"loaded less", withChanged(287, load), gigabyte, 1, healthy},
        {"peaks are no load", withChanged(1440, spike), gigabyte, 1, healthy},
        {"little space", withChanged(0, spike), gigabyte, 0.149, only(StorageBottleneck{0.149})},
        {"space enough", withChanged(0, spike), gigabyte, 0.15, healthy},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(evaluate(each.records, each.memory, each.diskFree), each.verdict) << each.name;
    }
    const auto all = withChanged(1440, [&](MinuteRecord& each) {
        press(each);
        load(each);
    });
    EXPECT_EQ(evaluate(all, 8 * gigabyte, 0),
              (UpgradeVerdict{Bottlenecks{
                  {MemoryBottleneck{16, 1}, CPUBottleneck{1}, StorageBottleneck{0}}, 24}}));
}

} // namespace
} // namespace pacelet
