#include "Core/Diagnosis/InternetDiagnosis.h"
#include "tests/Core/Diagnosis/ToldFindings.h"

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

TEST(InternetDiagnosis, SaysWhatItFound) {
    using enum LinkType;
    const AppName browser = [](std::int32_t pid) {
        return pid == 1234 ? std::optional<std::string>{"Browser"} : std::nullopt;
    };
    const SpeedResult slow{.downloadMbps = 9.6};
    const SpeedResult poor{.downloadMbps = 1, .responsivenessRPM = 100};
    const std::vector<NetUsage> hogs{{1, "a", 1e6, 0}, {2, "b", 9e6, 0}};
    const std::pair<const char*, std::vector<Finding>> cases[] = {
        {"offline", diagnose(offline, signal(-90), SpeedResult{.downloadMbps = 5}, hogs)},
        {"slow band", diagnose(wifi, signal(-70, WiFiBand::ghz2_4))},
        {"fair signal", diagnose(wifi, signal(-71))},
        {"fair signal on a slow band", diagnose(wifi, signal(-80, WiFiBand::ghz2_4))},
        {"weak signal", diagnose(wifi, signal(-81))},
        {"slow wired line", diagnose(ethernet, signal(-90), slow)},
        {"slow line", diagnose(wifi, signal(-70), slow)},
        {"slow line", diagnose(other, signal(-40), slow)},
        {"slow line, maybe by the signal", diagnose(wifi, std::nullopt, slow)},
        {"slow line, maybe by the signal", diagnose(other, std::nullopt, slow)},
        {"slow line by the signal", diagnose(wifi, signal(-71), slow)},
        {"hogs", diagnose(ethernet, std::nullopt, std::nullopt,
                          {{1234, "helper", 900000.9, 100000},
                           {7, "quiet", 999999.9, 0},
                           {8, "curl", 0, 3.5 * 1024 * 1024}},
                          browser)},
        {"by severity, then in the order of the rules", diagnose(wifi, signal(-75), poor, hogs)}};
    for (const auto& [name, findings] : cases) {
        testing::expectTold(name, findings);
    }
    for (const auto& findings :
         {diagnose(wifi, std::nullopt), diagnose(wifi, signal(-70)),
          diagnose(ethernet, signal(-90)), diagnose(other, signal(-50, WiFiBand::ghz2_4)),
          diagnose(ethernet, std::nullopt, SpeedResult{.downloadMbps = 10.0})}) {
        EXPECT_EQ(testing::ids(findings), "");
    }
    EXPECT_EQ(testing::ids(diagnose(wifi, signal(-50, WiFiBand::ghz2_4), poor, hogs)),
              "slowLine laggy bandwidthHog:pid:1 bandwidthHog:pid:2 band24");
}

TEST(InternetDiagnosis, TakesAnyFigureButNoRateThatIsNone) {
    for (const auto& [rpm, expected] :
         std::vector<std::pair<std::optional<std::int64_t>, std::string>>{
             {std::nullopt, ""}, {300, ""}, {299, "laggy"}, {0, "laggy"}, {INT64_MIN, "laggy"}}) {
        const SpeedResult speed{.downloadMbps = 50, .responsivenessRPM = rpm};
        EXPECT_EQ(testing::ids(diagnose(LinkType::wifi, std::nullopt, speed)), expected);
    }
    for (const auto& [mbps, shown] :
         {std::pair{2.5, "3"}, {-0.2, "0"}, {-1e30, "-1000000000000000019884624838656"}}) {
        EXPECT_EQ(
            diagnose(LinkType::ethernet, {}, SpeedResult{.downloadMbps = mbps}).at(0).headline(),
            "Your internet is slow: " + std::string{shown} + " Mbps down.");
    }
    for (const double rate : {-std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN(), 1e19}) {
        EXPECT_DEATH(diagnose(LinkType::wifi, std::nullopt, std::nullopt, {{1, "a", rate, 0}}),
                     "network rate");
    }
}

} // namespace
} // namespace pacelet
