#include "Hosts/Linux/Speed/WorkingConditions.h"

#include "Hosts/Linux/Speed/TestFiles.h"

#include <gmock/gmock.h>

namespace pacelet::Linux {
namespace {

using namespace ::testing;

/// How many intervals of a second, of so many bits each, it takes until no more connections are
/// wanted; 0 when these do not do.
std::size_t intervalsUntilStable(const std::vector<double>& rates) {
    Goodput goodput;
    for (std::size_t count = 0; count < rates.size(); ++count) {
        goodput.add(static_cast<std::int64_t>(rates[count] / 8), Seconds{1});
        if (goodput.isStable()) {
            return count + 1;
        }
    }
    return 0;
}

TEST(Goodput, IsStableWhenFourIntervalsAgree) {
    EXPECT_EQ(intervalsUntilStable({8e6, 8e6, 8e6}), 0U);
    EXPECT_EQ(intervalsUntilStable({8e6, 8.3e6, 7.8e6, 8e6}), 4U);
    EXPECT_EQ(intervalsUntilStable({1e6, 4e6, 8e6, 8e6, 8e6, 8e6}), 6U);
    // Single intervals never agree, their averages do.
    EXPECT_EQ(intervalsUntilStable({8e6, 10e6, 8e6, 10e6, 8e6, 10e6}), 4U);
    EXPECT_EQ(intervalsUntilStable({1e6, 2e6, 4e6, 8e6, 16e6, 32e6, 64e6}), 0U);
    EXPECT_EQ(intervalsUntilStable({0, 0, 0, 0, 0}), 0U);
}

TEST(Goodput, IsThatOfTheLastFourIntervals) {
    Goodput goodput;
    EXPECT_EQ(goodput.bitsPerSecond(), 0);
    for (const std::int64_t bytes : {1'000'000, 500, 500, 500}) {
        goodput.add(bytes, Seconds{0.5});
    }
    goodput.add(2500, Seconds{2});
    EXPECT_DOUBLE_EQ(goodput.bitsPerSecond(), 4000 * 8 / 3.5);
}

TEST(Responsiveness, IsTheMeanOfSeparateAndLoadedConnections) {
    const std::vector<Seconds> tenth(4, Seconds{0.1});
    const std::vector<Seconds> fifth(4, Seconds{0.2});
    EXPECT_EQ(roundTripsPerMinute({}), std::nullopt);
    EXPECT_DOUBLE_EQ(roundTripsPerMinute({tenth, {}, tenth, {}}).value(), 600);
    EXPECT_DOUBLE_EQ(roundTripsPerMinute({{}, {}, {}, fifth}).value(), 300);
    EXPECT_DOUBLE_EQ(roundTripsPerMinute({tenth, fifth, tenth, fifth}).value(), (450 + 300) / 2.0);
    EXPECT_DOUBLE_EQ(combinedPerMinute(600, 300).value(), 400);
    EXPECT_EQ(combinedPerMinute({}, 300), 300);

    std::vector<Seconds> twenty(19, Seconds{1});
    twenty.emplace_back(50);
    EXPECT_EQ(trimmedMean(twenty), Seconds{1});
    EXPECT_EQ(lowerMedian({Seconds{3}, Seconds{1}, Seconds{2}, Seconds{9}}), Seconds{2});
}

TEST(TestFiles, AreReadFromEitherShapeOfTheDocument) {
    const auto urls = [](const std::string& infix, const std::string& upload) {
        return R"("urls":{"small_)" + infix + R"(download_url":"s","large_)" + infix +
               R"(download_url":"l",")" + upload + R"(":"u"})";
    };
    const std::string newer = urls("", "upload_url");
    const TestFiles plain{"s", "l", "u", ""};
    EXPECT_EQ(parseTestFiles("{" + newer + "}"), plain);
    EXPECT_EQ(parseTestFiles("{" + urls("https_", "https_upload_url") + R"(,"version":1})"), plain);
    EXPECT_EQ(parseTestFiles("{" + newer + R"(,"test_endpoint":"edge-7.example.com"})"),
              (TestFiles{"s", "l", "u", "edge-7.example.com"}));
    EXPECT_EQ(parseTestFiles("{" + newer + R"(,"test_endpoint":"a:1:b"})"), plain);
    for (const std::string& bad :
         {std::string{"[]"}, std::string{"<html>"}, std::string{}, "{" + newer + R"(,"version":2})",
          "{" + newer + R"(,"version":"1"})", "{" + urls("", "upload") + "}"}) {
        EXPECT_EQ(parseTestFiles(bad), std::nullopt) << bad;
    }
}

} // namespace
} // namespace pacelet::Linux
