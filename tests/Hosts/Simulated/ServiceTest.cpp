#include "Core/Browser/BrowserController.h"
#include "Core/Browser/TabCleanup.h"
#include "Core/Diagnosis/InternetDiagnosis.h"
#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Inspectors/SpotlightAdvisor.h"
#include "Core/Inspectors/WindowCensus.h"
#include "Core/Internet/LinkReader.h"
#include "Core/Internet/NetTop.h"
#include "Core/Internet/SpeedTest.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Core/Usage/MacInfo.h"
#include "Core/Usage/UpgradeAdvisor.h"
#include "Core/Usage/UsageStore.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "tests/Support/Table.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace pacelet::Simulated {

namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::Field;
using ::testing::Gt;
using ::testing::IsEmpty;

BrowserController controllerOf(SimulatedMac& mac) {
    return BrowserController{mac.platform()};
}

std::vector<FindingKind> internetFindings(SimulatedMac& mac) {
    LinkType link = LinkType::other;
    LinkReader::currentType(mac.network, [&](LinkType type) { link = type; });
    std::optional<SpeedResult> speed;
    try {
        speed = SpeedTest::run(mac.tools, mac.machine);
    } catch (const SpeedTestError&) {
        EXPECT_EQ(link, LinkType::offline);
    }
    std::vector<FindingKind> kinds;
    for (const Finding& finding :
         InternetDiagnosis::run(link, LinkReader::wifi(mac.network), speed,
                                NetTop::sample(mac.tools), [](auto) { return std::nullopt; })) {
        kinds.push_back(finding.kind());
    }
    return kinds;
}

} // namespace

// What a script of the program finds, closes and merges in 140 tabs.
TEST(SimulatedBrowser, IsCleanedUpThroughItsScripts) {
    const auto mac = makeScenario("chrome-tabs");
    const BrowserController controller = controllerOf(*mac);
    constexpr auto chrome = ChromiumBrowser::chrome;
    const auto count = [&] {
        std::size_t tabs = 0;
        for (const auto& window : controller.windows(chrome)) {
            tabs += window.tabs.size();
        }
        return tabs;
    };
    auto windows = controller.windows(chrome);
    ASSERT_EQ(windows.size(), 9U);
    ASSERT_EQ(count(), 140U);
    EXPECT_EQ(
        std::count_if(windows.begin(), windows.end(), [](const auto& w) { return w.isIncognito; }),
        1);
    const std::int32_t pid = mac->machine.lock()->processes.find("Google Chrome")->pid;
    EXPECT_EQ(WindowCensus::live(mac->windowServer).front(),
              (WindowCount{"Google Chrome", pid, 9}));
    const auto extensions = TabCleanup::extensions(PSProcessSource::argsListing(mac->tools),
                                                   "/Applications/Google Chrome.app");
    EXPECT_EQ(extensions.count, 6);

    const auto duplicates = TabCleanup::duplicates(windows);
    EXPECT_THAT(duplicates.size(), AllOf(Gt(5U), ::testing::Lt(70U)));
    const std::size_t processes = mac->machine.lock()->processes.all().size();
    controller.close(duplicates, chrome);
    EXPECT_EQ(count(), 140 - duplicates.size());
    EXPECT_EQ(mac->machine.lock()->processes.all().size(), processes - duplicates.size());

    windows = controller.windows(chrome);
    EXPECT_THAT(TabCleanup::duplicates(windows), IsEmpty());
    const MergePlan plan = TabCleanup::mergePlan(windows).value();
    EXPECT_EQ(plan.profile, "Work");
    const std::size_t before = count();
    controller.merge(plan, chrome);
    EXPECT_EQ(count(), before) << "no tab is lost, and none is opened twice";
    EXPECT_EQ(controller.windows(chrome).size(), windows.size() - 3);
    controller.openMemorySaver(chrome);
    EXPECT_EQ(count(), before + 1);
}

TEST(SimulatedInternet, GivesEachScenarioItsFindings) {
    using enum FindingKind;
    const std::pair<const char*, std::vector<FindingKind>> rows[] = {
        {"quiet", {}},
        {"offline", {FindingKind::offline}},
        {"slow-line", {slowLine, weakWiFi, laggy, bandwidthHog}}};
    for (const auto& [scenario, findings] : rows) {
        EXPECT_THAT(internetFindings(*makeScenario(scenario)), ElementsAreArray(findings))
            << scenario;
    }
}

TEST(SimulatedInternet, ToolsTakeTheirTimeAndAnswerOfTheirEnd) {
    const auto mac = makeScenario("quiet");
    mac->tools.setTiming([&](Seconds duration) { mac->machine.advance(duration); });
    const TimePoint before = mac->machine.now();
    const SpeedResult result = SpeedTest::run(mac->tools, mac->machine);
    EXPECT_NEAR((result.measuredAt - before).count(), 25, 1e-6);
    EXPECT_DOUBLE_EQ(result.downloadMbps, 412);
    mac->machine.inject(ToolTakes{"/bin/ps", Seconds{90}});
    EXPECT_NEAR((PSProcessSource{mac->tools, mac->machine}.sample().takenAt - before).count(), 115,
                1e-6);
}

TEST(SimulatedInternet, PathUpdatesComeWhenTheyAreToCome) {
    const auto mac = makeScenario("quiet");
    std::vector<LinkType> seen;
    const auto note = [&](LinkType type) { seen.push_back(type); };
    mac->network.setDelivery(PathDelivery::onDemand);
    LinkReader::currentType(mac->network, note);
    EXPECT_THAT(seen, IsEmpty());
    mac->network.deliver(2);
    EXPECT_THAT(seen, ElementsAre(LinkType::wifi)) << "the second update changes nothing";
    mac->network.setDelivery(PathDelivery::atOnce);
    mac->network.setPath({true, false, true});
    LinkReader::currentType(mac->network, note);
    EXPECT_THAT(seen, ElementsAre(LinkType::wifi, LinkType::ethernet));

    std::vector<bool> updates;
    const auto monitor = mac->network.makePathMonitor();
    monitor->start("watch", [&](NetworkPath path) {
        updates.push_back(path.satisfied);
        monitor->cancel();
    });
    mac->network.setPath({});
    EXPECT_THAT(updates, ElementsAre(true)) << "a cancelled monitor hears no more";
    mac->machine.lock()->network.wifi.reset();
    EXPECT_EQ(LinkReader::wifi(mac->network), std::nullopt);
}

TEST(SimulatedMachine, TellsWhatItIs) {
    const auto air = makeScenario("quiet");
    EXPECT_EQ(MacInfo::read(air->tools, air->kernel),
              (MacInfo{"MacBook Air", "Apple M2", 16 * gibibyte, true}));
    air->machine.inject(ToolPrints{"/usr/sbin/system_profiler", ""});
    EXPECT_EQ(MacInfo::read(air->tools, air->kernel),
              (MacInfo{"Mac14,2", "Apple silicon", 16 * gibibyte, true}));
    const auto intel = makeScenario("intel-history");
    EXPECT_EQ(MacInfo::read(intel->tools, intel->kernel),
              (MacInfo{"MacBook Pro", "Quad-Core Intel Core i5", 8 * gibibyte, false}));
    intel->machine.inject(ToolMissing{});
    EXPECT_EQ(MacInfo::read(intel->tools, intel->kernel).chip, "Intel");
}

TEST(SimulatedHistory, OfAnOldMachineWantsAnUpgrade) {
    const auto mac = makeScenario("intel-history");
    const UsageStore store{std::filesystem::path{mac->platform().applicationSupport} / "Pacelet"};
    EXPECT_EQ(store.load(mac->machine.now()), std::vector<MinuteRecord>{})
        << "the open minute is not there";
    const auto week = store.load(mac->machine.now() - days(7));
    EXPECT_GT(week.size(), 5000U);
    const auto verdict = UpgradeAdvisor::evaluate(week, 8 * gibibyte, 31.0 / 250);
    EXPECT_EQ(std::get<Bottlenecks>(verdict).list.size(), 3U);
    EXPECT_GT(store.load(mac->machine.now() - days(40)).size(), 23000U);
}

TEST(SimulatedFolders, HoldWhatStartsByItself) {
    const auto mac = makeScenario("virtual-machine");
    const Platform platform = mac->platform();
    const auto jobs = BackgroundItemsReader::parseLaunchctlList(
        mac->tools.run("/bin/launchctl", {"list"}).stdout);
    EXPECT_GT(jobs.size(), 120U);
    const auto items = BackgroundItemsReader::markRunning(
        BackgroundItemsReader::scan(platform.home, platform.root), jobs,
        PSProcessSource{mac->tools, mac->machine}.sample().processes);
    std::vector<std::array<std::string, 1>> lines;
    for (const BackgroundItem& item : items) {
        lines.push_back({item.label + " of " + item.ownerApp.value_or("nobody") +
                         (item.pid ? ", running" : "") + (item.keepAlive ? ", kept" : "")});
    }
    EXPECT_EQ(lines, pacelet::testing::rows<1>("Simulated", "what starts by itself"));
    EXPECT_THAT(SpotlightAdvisor::heavyFolders(platform.home, gigabyte), IsEmpty());
    EXPECT_EQ(SpotlightAdvisor::heavyFolders(platform.home, 0).size(), 1U);
}

} // namespace pacelet::Simulated
