#include "Core/Sampling/Format.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <rapidcheck.h>
#include <string>
#include <vector>

namespace pacelet {
namespace {

constexpr std::int64_t KB = 1024;
constexpr std::int64_t MB = KB * 1024;
constexpr std::int64_t GB = MB * 1024;
constexpr std::int64_t TB = GB * 1024;

TEST(Format, Bytes) {
    const std::vector<std::pair<std::int64_t, std::string>> cases{
        {0, "0 KB"},
        {511, "0 KB"},
        {512, "1 KB"},
        {-511, "0 KB"},
        {-512, "-1 KB"},
        {1023 * KB + 511, "1023 KB"},
        {1023 * KB + 512, "1 MB"},
        {MB + MB / 2, "1.5 MB"},
        {MB + MB / 20 + 1, "1.1 MB"},
        {MB + MB / 20, "1 MB"},
        {512 * MB, "512 MB"},
        {1024 * MB - MB / 20 - 1, "1023.9 MB"},
        {1024 * MB - MB / 20, "1 GB"},
        {GB + GB / 4, "1.25 GB"},
        {2 * GB + GB / 10, "2.1 GB"},
        {17179869184, "16 GB"},
        {1024 * GB - 1, "1 TB"},
        {TB + TB / 100, "1.01 TB"},
        {5000 * TB, "5000 TB"},
        {-3 * GB / 2, "-1.5 GB"},
        {std::numeric_limits<std::int64_t>::max(), "8388608 TB"},
        {std::numeric_limits<std::int64_t>::min(), "-8388608 TB"},
    };
    for (const auto& [count, text] : cases) {
        EXPECT_EQ(Format::bytes(count), text) << count;
    }
}

TEST(Format, BytesStayCloseToTheCount) {
    EXPECT_TRUE(rc::check("within half a last digit, and never reaching the next unit", [] {
        const int shift = *rc::gen::inRange(0, 53);
        const std::int64_t count = *rc::gen::inRange<std::int64_t>(0, 1024) << shift;
        const std::string text = Format::bytes(count);
        const double figure = std::stod(text);
        const std::string unit = text.substr(text.find(' ') + 1);
        const double size = unit == "KB"   ? 0x1p10
                            : unit == "MB" ? 0x1p20
                            : unit == "GB" ? 0x1p30
                                           : 0x1p40;
        const double digit = unit == "KB" ? 1 : unit == "MB" ? 0.1 : 0.01;
        RC_ASSERT(std::abs(figure - static_cast<double>(count) / size) <= digit / 2 + 1e-9);
        RC_ASSERT(unit == "TB" || figure < 1024);
    }));
}

TEST(Format, PercentAndStorage) {
    EXPECT_EQ(Format::percent(49.5), "50%");
    EXPECT_EQ(Format::percent(0.4), "0%");
    EXPECT_EQ(Format::percent(-0.4), "0%");
    EXPECT_EQ(Format::percent(-2.5), "-3%");
    EXPECT_EQ(Format::percent(1234.4), "1234%");
    EXPECT_EQ(Format::storage(500'000'000'000), "500 GB");
    EXPECT_EQ(Format::storage(999'600'000'000), "1000 GB");
    EXPECT_EQ(Format::storage(1'000'000'000'000), "1 TB");
    EXPECT_EQ(Format::storage(1'600'000'000'000), "2 TB");
    EXPECT_EQ(Format::storage(-400'000'000), "0 GB");
}

TEST(FormatDeathTest, RefusesFiguresThatAreNone) {
    EXPECT_DEATH(Format::percent(std::nan("")), "out of range");
    EXPECT_DEATH(Format::percent(1e19), "out of range");
}

} // namespace
} // namespace pacelet
