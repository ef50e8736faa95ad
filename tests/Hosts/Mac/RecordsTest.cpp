#include "Hosts/Mac/Records/Records.h"
#include "Core/Inspectors/WindowCensus.h"

#include <gtest/gtest.h>

namespace pacelet::Mac {
namespace {

/// As the system's own record, with more between its counts than we read.
struct KernelRecord {
    std::uint32_t free_count = 1;
    std::uint32_t active_count = 90;
    std::uint32_t wire_count = 2;
    std::uint64_t pageins = 91;
    std::uint32_t purgeable_count = 3;
    std::uint32_t compressor_page_count = 4;
    std::uint32_t external_page_count = 5;
    std::uint32_t internal_page_count = 4'000'000'000;
};

TEST(MacRecords, CountsWindowsOfDictionariesAsTheServerGivesThem) {
    const auto window = [](std::int64_t layer, PropertyValue name) {
        return windowDictionary({{"kCGWindowLayer", layer},
                                 {"kCGWindowOwnerPID", std::int64_t{7}},
                                 {"kCGWindowAlpha", 1.0},
                                 {"kCGWindowBounds", std::monostate{}},
                                 {"kCGWindowIsOnscreen", true},
                                 {"kCGWindowOwnerName", std::move(name)}});
    };
    EXPECT_EQ(window(0, std::string{"Mail"}).count("kCGWindowBounds"), 0U);
    const auto counts = WindowCensus::count(
        {window(0, std::string{"Mail"}), window(25, std::string{"Mail"}), window(0, DataBytes{})});
    ASSERT_EQ(counts.size(), 1U);
    EXPECT_EQ(counts[0].count, 1);
}

TEST(MacRecords, KeepsEachCountOfMemoryInItsPlace) {
    const VMStatistics64 counts = vmStatisticsOf(KernelRecord{});
    EXPECT_EQ(counts.free_count, 1U);
    EXPECT_EQ(counts.wire_count, 2U);
    EXPECT_EQ(counts.purgeable_count, 3U);
    EXPECT_EQ(counts.compressor_page_count, 4U);
    EXPECT_EQ(counts.external_page_count, 5U);
    EXPECT_EQ(counts.internal_page_count, 4'000'000'000U);
}

TEST(MacRecords, TakesNoPreferenceOfAnotherType) {
    EXPECT_EQ(truthOf(std::int64_t{1}), true);
    EXPECT_EQ(truthOf(std::int64_t{2}), std::nullopt);
    EXPECT_EQ(truthOf(std::string{"YES"}), std::nullopt);
    EXPECT_EQ(dataOf(std::string{"x"}), std::nullopt);
}

TEST(MacRecords, KnowsNumbersOfTomorrow) {
    EXPECT_EQ(activationPolicyOf(9), ActivationPolicy::prohibited);
    EXPECT_EQ(loginItemStatusOf(9), LoginItemStatus::notFound);
    EXPECT_EQ(thermalStateOf(9), 3);
    EXPECT_EQ(channelBandOf(9), 0);
    EXPECT_EQ(channelBandOf(std::nullopt), std::nullopt);
    EXPECT_FALSE(networkPathOf(3, true, false).satisfied) << "one that might become ready";
    EXPECT_EQ(filledBytes(0, 9, 8), std::nullopt);
    EXPECT_EQ(filledBytes(-1, 4, 8), std::nullopt);
}

} // namespace
} // namespace pacelet::Mac
