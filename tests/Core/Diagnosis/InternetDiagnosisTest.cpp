#include "Core/Diagnosis/InternetDiagnosis.h"

#include <gtest/gtest.h>
#include <limits>

namespace pacelet {
namespace {

const AppName nobody = [](std::int32_t) { return std::nullopt; };

std::vector<Finding> diagnose(LinkType link, std::optional<WiFiLink> wifi,
                              std::optional<SpeedResult> speed = std::nullopt,
                              std::vector<NetUsage> usage = {}, const AppName& appName = nobody) {
    return InternetDiagnosis::run(link, wifi, speed, usage, appName);
}

WiFiLink signal(std::int64_t rssi, WiFiBand band = WiFiBand::ghz5) {
    return WiFiLink{.rssi = rssi, .band = band};
}

std::vector<std::string> ids(const std::vector<Finding>& findings) {
    std::vector<std::string> list;
    for (const Finding& finding : findings) {
        list.push_back(finding.id());
    }
    return list;
}

constexpr std::string_view fairHeadline = "Your Wi-Fi signal is only fair.";

TEST(InternetDiagnosis, OfflineHidesEverythingElse) {
    const Finding offline{{.kind = FindingKind::offline,
                           .severity = Severity::high,
                           .headline = "You're offline.",
                           .detail = "Check Wi-Fi or your network cable.",
                           .primaryFix = FixID::openWiFiSettings}};
    EXPECT_EQ(diagnose(LinkType::offline, signal(-90), SpeedResult{.downloadMbps = 5},
                       {{1, "a", 5e6, 0}}),
              std::vector{offline});
}

TEST(InternetDiagnosis, JudgesTheSignalOfAWiFiLinkAlone) {
    const auto weak = [](Severity severity, std::string_view headline, std::string rssi) {
        return Finding{
            {.kind = FindingKind::weakWiFi,
             .severity = severity,
             .headline = std::string{headline},
             .detail = "Move closer to your router or remove obstacles. Signal: " + rssi + " dBm.",
             .primaryFix = FixID::openWiFiSettings}};
    };
    const Finding slowBand{{.kind = FindingKind::band24,
                            .severity = Severity::low,
                            .headline = "You're on 2.4 GHz Wi-Fi.",
                            .detail = "5 GHz is usually much faster if your router supports it."}};
    struct Row {
        LinkType link;
        std::optional<WiFiLink> wifi;
        std::vector<Finding> findings;
    };
    const std::vector<Row> rows{
        {LinkType::wifi, std::nullopt, {}},
        {LinkType::wifi, signal(-70), {}},
        {LinkType::wifi, signal(-70, WiFiBand::ghz2_4), {slowBand}},
        {LinkType::wifi, signal(-71), {weak(Severity::medium, fairHeadline, "-71")}},
        {LinkType::wifi,
         signal(-80, WiFiBand::ghz2_4),
         {weak(Severity::medium, fairHeadline, "-80")}},
        {LinkType::wifi, signal(-81), {weak(Severity::high, "Your Wi-Fi signal is weak.", "-81")}},
        {LinkType::ethernet, signal(-90), {}},
        {LinkType::other, signal(-50, WiFiBand::ghz2_4), {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(diagnose(row.link, row.wifi), row.findings);
    }
}

TEST(InternetDiagnosis, BlamesTheLineOrTheSignalForASlowTest) {
    const std::string line = " is fine, so the slowdown is your internet line or router.";
    const std::string signalToo = "Weak Wi-Fi may be part of it.";
    struct Row {
        LinkType link;
        std::optional<WiFiLink> wifi;
        std::string detail;
    };
    const std::vector<Row> rows{
        {LinkType::ethernet, signal(-90), "Your wired connection" + line},
        {LinkType::wifi, signal(-70), "Your Wi-Fi" + line},
        {LinkType::other, signal(-40), "Your Wi-Fi" + line},
        {LinkType::wifi, signal(-71), signalToo},
        {LinkType::wifi, std::nullopt, signalToo},
        {LinkType::other, std::nullopt, signalToo},
    };
    for (const Row& row : rows) {
        const Finding slow{{.kind = FindingKind::slowLine,
                            .severity = Severity::high,
                            .headline = "Your internet is slow: 10 Mbps down.",
                            .detail = row.detail}};
        EXPECT_EQ(diagnose(row.link, row.wifi, SpeedResult{.downloadMbps = 9.6}).front(), slow);
    }
    const auto headline = [](double mbps) {
        const auto findings =
            diagnose(LinkType::ethernet, std::nullopt, SpeedResult{.downloadMbps = mbps});
        return findings.empty() ? "" : findings.front().headline();
    };
    EXPECT_EQ(headline(10.0), "");
    EXPECT_EQ(headline(2.5), "Your internet is slow: 3 Mbps down.");
    EXPECT_EQ(headline(-0.2), "Your internet is slow: 0 Mbps down.");
    EXPECT_EQ(headline(-1e30),
              "Your internet is slow: -1000000000000000019884624838656 Mbps down.");
}

TEST(InternetDiagnosis, CallsALineLaggyBelowThreeHundred) {
    const Finding laggy{{.kind = FindingKind::laggy,
                         .severity = Severity::medium,
                         .headline = "Your connection gets laggy when it's busy.",
                         .detail = "Video calls and games may stutter while something else "
                                   "downloads."}};
    for (const auto& [rpm, isLaggy] : std::vector<std::pair<std::optional<std::int64_t>, bool>>{
             {std::nullopt, false}, {300, false}, {299, true}, {0, true}, {INT64_MIN, true}}) {
        const SpeedResult speed{.downloadMbps = 50, .responsivenessRPM = rpm};
        EXPECT_EQ(diagnose(LinkType::wifi, std::nullopt, speed),
                  isLaggy ? std::vector{laggy} : std::vector<Finding>{});
    }
}

TEST(InternetDiagnosis, NamesTheHogsByTheirApps) {
    const AppName appName = [](std::int32_t pid) {
        return pid == 1234 ? std::optional<std::string>{"Browser"} : std::nullopt;
    };
    const auto findings = diagnose(LinkType::ethernet, std::nullopt, std::nullopt,
                                   {{1234, "helper", 900000.9, 100000},
                                    {7, "quiet", 999999.9, 0},
                                    {8, "curl", 0, 3.5 * 1024 * 1024}},
                                   appName);
    ASSERT_EQ(ids(findings),
              (std::vector<std::string>{"bandwidthHog:pid:1234", "bandwidthHog:pid:8"}));
    EXPECT_EQ(findings[0], (Finding{{.kind = FindingKind::bandwidthHog,
                                     .severity = Severity::medium,
                                     .headline = "Browser is using 977 KB/s of your connection.",
                                     .detail = "Down 879 KB/s, up 98 KB/s.",
                                     .groupID = "pid:1234"}}));
    EXPECT_EQ(findings[1].headline(), "curl is using 3.5 MB/s of your connection.");
    EXPECT_EQ(findings[1].detail(), "Down 0 KB/s, up 3.5 MB/s.");
    for (const double rate : {std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN(), 1e19}) {
        EXPECT_DEATH(diagnose(LinkType::wifi, std::nullopt, std::nullopt, {{1, "a", rate, 0}}),
                     "network rate");
    }
}

TEST(InternetDiagnosis, RanksBySeverityAndKeepsTheRuleOrder) {
    const SpeedResult slow{.downloadMbps = 1, .responsivenessRPM = 100};
    const std::vector<NetUsage> hogs{{1, "a", 1e6, 0}, {2, "b", 9e6, 0}};
    EXPECT_EQ(ids(diagnose(LinkType::wifi, signal(-75), slow, hogs)),
              (std::vector<std::string>{"slowLine", "weakWiFi", "laggy", "bandwidthHog:pid:1",
                                        "bandwidthHog:pid:2"}));
    EXPECT_EQ(ids(diagnose(LinkType::wifi, signal(-50, WiFiBand::ghz2_4), slow, hogs)).back(),
              "band24");
}

} // namespace
} // namespace pacelet
