#include "PaceletApp/InternetView/InternetLook.h"

#include "Core/Internet/TrafficByApp.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "PaceletApp/InternetView/AppNames.h"
#include "PaceletApp/InternetView/FindingItem.h"
#include "PaceletApp/InternetView/ReadingItem.h"
#include "PaceletApp/InternetView/RelativeDate.h"
#include "PaceletApp/InternetView/SavedSpeed.h"
#include "PaceletApp/InternetView/TrafficItem.h"
#include "tests/PaceletApp/Support/SampleGroup.h"
#include "tests/PaceletApp/Support/Table.h"
#include "tests/PaceletApp/Support/ToneText.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace pacelet {
namespace {

using ::testing::ElementsAre;

const TimePoint now = fromUnixTime(1'790'000'000);

std::optional<std::string> noApp(std::int32_t) {
    return std::nullopt;
}

std::vector<std::string> lines(const std::vector<ReadingItem>& items) {
    std::vector<std::string> texts;
    for (const ReadingItem& item : items) {
        texts.push_back(fmt::format("{}: {} {}", item.label.toStdString(), item.value.toStdString(),
                                    toneText(item.tone).toStdString()));
    }
    return texts;
}

TEST(RelativeDate, namesTheNearestDatesAndCountsTheRest) {
    constexpr double minute = 60;
    constexpr double hour = 3600;
    constexpr double day = 86400;
    const Table<double, const char*, const char*> rows = {
        {0.99, "now", "now"},
        {1, "1 second ago", "in 1 second"},
        {59.9, "59 seconds ago", "in 59 seconds"},
        {minute, "1 minute ago", "in 1 minute"},
        {hour - 1, "59 minutes ago", "in 59 minutes"},
        {hour, "1 hour ago", "in 1 hour"},
        {day - 1, "23 hours ago", "in 23 hours"},
        {2 * day - 1, "yesterday", "tomorrow"},
        {2 * day, "2 days ago", "in 2 days"},
        {7 * day, "last week", "next week"},
        {30 * day, "last month", "next month"},
        {364 * day, "12 months ago", "in 12 months"},
        {365 * day, "last year", "next year"},
        {800 * day, "2 years ago", "in 2 years"},
    };
    for (const auto& [age, past, future] : rows) {
        EXPECT_EQ(relativeDate(Seconds{age}), past);
        EXPECT_EQ(relativeDate(Seconds{-age}), future);
    }
}

TEST(Readings, ofTheRadioTellItsQualityByColour) {
    const auto link = [](std::int64_t rssi, double rate, WiFiBand band) {
        return lines(readings(WiFiLink{rssi, -90, rate, band}));
    };
    EXPECT_THAT(link(-52, 866.5, WiFiBand::ghz5),
                ElementsAre("Signal: Excellent (-52 dBm) green", "Band: 5 GHz ",
                            "Wi-Fi link: 867 Mbps between your Mac and router "));
    const double unknown = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(link(-70, unknown, WiFiBand::unknown),
                ElementsAre("Signal: Good (-70 dBm) green", "Band: Unknown band "));
    EXPECT_THAT(link(-71, HUGE_VAL, WiFiBand::ghz2_4),
                ElementsAre("Signal: Fair (-71 dBm) amber", "Band: 2.4 GHz "));
    EXPECT_EQ(link(-80, 0, WiFiBand::ghz6).front(), "Signal: Fair (-80 dBm) amber");
    EXPECT_EQ(link(-81, 0, WiFiBand::ghz6).front(), "Signal: Poor (-81 dBm) red");
}

TEST(Readings, ofASpeedTestShowWhatItMeasured) {
    EXPECT_THAT(lines(readings(SpeedResult{412.5, 0.4, 812, 14.5, now})),
                ElementsAre("Download: 413 Mbps ", "Upload: 0 Mbps ",
                            "Responsiveness: Medium (812 RPM) ", "Latency: 15 ms "));
    EXPECT_THAT(lines(readings(SpeedResult{0, 1e6, {}, {}, now})),
                ElementsAre("Download: 0 Mbps ", "Upload: 1000000 Mbps "));
}

TEST(InternetLook, hasItsWordsForEveryStateOfTheLink) {
    const Table<std::optional<LinkType>, const char*, const char*> rows = {
        {std::nullopt, "", ""},
        {LinkType::wifi, "Wi-Fi", "wifi"},
        {LinkType::ethernet, "Wired connection", "network"},
        {LinkType::other, "Connected", "globe"},
        {LinkType::offline, "Offline", "wifi.slash"},
    };
    for (const auto& [link, name, symbol] : rows) {
        InternetState state;
        state.link = link;
        const InternetLook look = internetLook(state, findings(state, noApp, now).empty(), now);
        EXPECT_EQ(look.checking, !link);
        EXPECT_EQ(look.link, name);
        EXPECT_EQ(look.linkSymbol, symbol);
        // Healthy is what has been looked at, and has nothing wrong with it.
        EXPECT_EQ(look.healthyNote == "Run a speed test to check your internet line too.",
                  link && link != LinkType::offline);
    }
}

TEST(InternetLook, followsTheTestAndTheTraffic) {
    InternetState state;
    state.link = LinkType::wifi;
    InternetLook look = internetLook(state, true, now);
    EXPECT_EQ(look.speedNote, "See your real download and upload speed.");
    EXPECT_FALSE(look.testing || look.trafficLoaded || look.trafficIdle);
    EXPECT_EQ(look.testError, "");

    state.testing = true;
    state.usageLoaded = true;
    look = internetLook(state, true, now);
    EXPECT_TRUE(look.testing && look.trafficIdle);

    state.testing = false;
    state.testError = "It broke.";
    state.speed = SpeedResult{100, 20, {}, {}, now - Seconds{7200}};
    state.usage.push_back({7, "curl", 1, 0});
    look = internetLook(state, true, now);
    EXPECT_EQ(look.testError, "It broke.");
    EXPECT_EQ(look.speedNote, "Last tested 2 hours ago");
    // A result of any age is a result.
    EXPECT_EQ(look.healthyNote, "Wi-Fi signal and recent speed look fine.");
    EXPECT_TRUE(look.trafficLoaded && !look.trafficIdle);
    EXPECT_EQ(internetLook(state, false, now).healthyNote, "");
}

TEST(Findings, countASpeedForAnHour) {
    for (const auto& [age, count] : Table<double, std::size_t>{{-60, 2}, {3599.9, 2}, {3600, 0}}) {
        InternetState state;
        state.speed = SpeedResult{3, 1, 100, {}, now - Seconds{age}};
        EXPECT_TRUE(findings(state, noApp, now).empty()) << "before the link is known";
        state.link = LinkType::ethernet;
        EXPECT_EQ(findings(state, noApp, now).size(), count) << age;
    }
}

TEST(FindingItem, hasTheColourOfItsGravityAndTheFixOfItsKind) {
    InternetState state;
    state.link = LinkType::wifi;
    state.wifi = WiFiLink{-75, -90, 100, WiFiBand::ghz5};
    state.speed = SpeedResult{9.6, 1, {}, {}, now};
    state.usage = {{42, "rsync", 2e6, 0}};
    std::vector<std::string> texts;
    for (const Finding& finding : findings(state, noApp, now)) {
        const FindingItem item = findingItem(finding);
        texts.push_back(fmt::format("{} {} {} [{}]", item.symbol.toStdString(),
                                    toneText(item.tone).toStdString(), item.title.toStdString(),
                                    item.fix.title.toStdString()));
    }
    EXPECT_THAT(texts, ElementsAre("speedometer red Your internet is slow: 10 Mbps down. []",
                                   "wifi.exclamationmark amber Your Wi-Fi signal is only fair. "
                                   "[Wi-Fi settings]",
                                   "arrow.up.arrow.down amber rsync is using 1.9 MB/s of your "
                                   "connection. []"));
    state.wifi = WiFiLink{-50, -90, 100, WiFiBand::ghz2_4};
    state.speed.reset();
    state.usage.clear();
    EXPECT_EQ(findingItem(findings(state, noApp, now).front()).tone, Tone::Neutral);
}

TEST(Traffic, ofHelpersIsTheirApplications) {
    // A pid that two groups claim belongs to the first; the groups may go before the names do.
    AppName name;
    {
        const ProcessUsage helper = sampleUsage(12, "Helper");
        name = appNames(
            std::vector{sampleGroup({sampleUsage(10, "Browser"), sampleUsage(11, ""), helper}),
                        sampleGroup({sampleUsage(20, "Notes"), helper})});
    }
    const std::vector<NetUsage> usage{{12, "Helper (GPU)", 100, 1024},
                                      {99, "curl", 5000, 0},
                                      {10, "Browser", 2048, 0},
                                      {11, "Helper", 1048576, 24},
                                      {20, "Notes", 1, 1}};
    std::vector<std::string> rows;
    for (const NetUsage& app : trafficByApp(usage, name)) {
        const TrafficItem item = trafficItem(app);
        rows.push_back((item.name + u' ' + item.incoming + u' ' + item.outgoing).toStdString());
    }
    EXPECT_THAT(rows,
                ElementsAre("Browser 1 MB/s 1 KB/s", "curl 5 KB/s 0 KB/s", "Notes 0 KB/s 0 KB/s"));
}

TEST(SavedSpeed, isWhatWasStoredOrNothing) {
    Simulated::SimulatedMac mac{{}};
    EXPECT_EQ(savedSpeed(mac.preferences), std::nullopt);
    for (const char* bytes : {"", "{", "[]", "{\"downloadMbps\":1}", "\xff"}) {
        mac.preferences.setData("lastSpeedTest", bytes);
        EXPECT_EQ(savedSpeed(mac.preferences), std::nullopt) << bytes;
    }
    const SpeedResult result{412.25, 38, 812, 14.5, now};
    saveSpeed(mac.preferences, result);
    EXPECT_EQ(savedSpeed(mac.preferences), result);
    mac.preferences.setBoolean("lastSpeedTest", true);
    EXPECT_EQ(savedSpeed(mac.preferences), std::nullopt);
}

} // namespace
} // namespace pacelet
