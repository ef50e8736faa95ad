#include "Core/Internet/SpeedTest.h"
#include "Core/Sampling/MemoryStats.h"
#include "Core/Sampling/PSParser.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Core/Sampling/SignalReader.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "tests/Support/Properties.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <thread>

namespace pacelet::Simulated {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::vector<std::string> psArguments{"-axo", "pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm="};

const std::vector<std::pair<std::string, std::vector<std::string>>> everyTool{
    {"/bin/ps", psArguments},
    {"/bin/ps", {"-axo", "pid=,rss=,args="}},
    {"/bin/launchctl", {"list"}},
    {"/usr/bin/networkQuality", {"-c", "-M", "25"}},
    {"/usr/bin/nettop", {"-P", "-d", "-L", "2", "-s", "1", "-x", "-J", "bytes_in,bytes_out"}},
    {"/usr/sbin/system_profiler", {"SPHardwareDataType", "-json"}}};

std::vector<ProcessSample> sample(SimulatedMac& mac) {
    return PSParser::parse(mac.tools.run("/bin/ps", psArguments).stdout);
}

std::ptrdiff_t processesOf(SimulatedMac& mac, const std::string& name) {
    const auto all = sample(mac);
    return std::count_if(all.begin(), all.end(), [&](const ProcessSample& each) {
        return each.path.starts_with("/Applications/" + name + ".app/");
    });
}

TEST(Machine, TheSameSeedAndCallsGiveTheSameTexts) {
    pacelet::testing::checkProperty(20, [] {
        const auto name = *rc::gen::elementOf(scenarioNames());
        const auto seed = *rc::gen::inRange<std::uint64_t>(0, 5);
        const auto left = makeScenario(name, seed);
        const auto right = makeScenario(name, seed);
        for (const int step : *rc::gen::container<std::vector<int>>(4, rc::gen::inRange(0, 4000))) {
            left->machine.advance(Seconds{step / 10.0});
            right->machine.advance(Seconds{step / 10.0});
            for (const auto& [tool, arguments] : everyTool) {
                RC_ASSERT(left->tools.run(tool, arguments) == right->tools.run(tool, arguments));
            }
        }
    });
}

TEST(Machine, AnotherSeedGivesAnotherMachine) {
    EXPECT_NE(makeScenario("quiet", 1)->tools.run("/bin/ps", psArguments),
              makeScenario("quiet", 2)->tools.run("/bin/ps", psArguments));
    EXPECT_EQ(makeScenario("no such scenario"), nullptr);
}

// CPU time is the integral of the load: the same however time is cut, and never running backwards.
TEST(Load, CPUTimeDoesNotDependOnTheSteps) {
    pacelet::testing::checkProperty(300, [] {
        const auto number = [](int low, int high) {
            return static_cast<double>(*rc::gen::inRange(low, high));
        };
        const Load load{.percent = number(0, 800),
                        .swing = number(0, 100) / 100,
                        .period = Seconds{number(5, 100)},
                        .phase = number(0, 6),
                        .until = Seconds{number(0, 400)},
                        .percentAfter = 2};
        auto cuts = *rc::gen::container<std::vector<int>>(6, rc::gen::inRange(0, 500));
        std::sort(cuts.begin(), cuts.end());
        Seconds sum{0};
        for (std::size_t index = 1; index < cuts.size(); ++index) {
            const Seconds part = load.used(Seconds{cuts[index - 1]}, Seconds{cuts[index]});
            RC_ASSERT(part >= Seconds{-1e-9});
            sum += part;
        }
        const Seconds whole = load.used(Seconds{cuts.front()}, Seconds{cuts.back()});
        RC_ASSERT(std::abs((sum - whole).count()) < 1e-6);
    });
}

TEST(Machine, ClocksGoTogetherButTheWallClockMayJumpAndProcessesSleep) {
    const auto mac = makeScenario("quiet");
    const TimePoint wall = mac->machine.now();
    const MonotonicTime monotonic = mac->machine.monotonicNow();
    const Seconds uptime = mac->kernel.systemUptime();
    std::vector<std::string> told;
    const ObserverHandle handle = mac->workspace.observeSleep([&] { told.emplace_back("sleep"); },
                                                              [&] { told.emplace_back("wake"); });
    const double before = sample(*mac).at(1).cpuTime;
    mac->sleepFor(hours(8));
    EXPECT_THAT(told, ElementsAre("sleep", "wake"));
    EXPECT_EQ(sample(*mac).at(1).cpuTime, before);
    mac->machine.jumpWallClock(hours(-2));
    mac->machine.advance(Seconds{10});
    EXPECT_GT(sample(*mac).at(1).cpuTime, before);
    EXPECT_NEAR((mac->machine.now() - wall).count(), 6 * 3600 + 10, 1e-3);
    EXPECT_NEAR((mac->machine.monotonicNow() - monotonic).count(), 8 * 3600 + 10, 1e-3);
    EXPECT_NEAR((mac->kernel.systemUptime() - uptime).count(), 8 * 3600 + 10, 1e-3);
    EXPECT_NEAR(SignalReader::read(mac->kernel, mac->machine, 0).uptime,
                mac->kernel.systemUptime().count(), 1);
}

TEST(Machine, AMonthPassesWithPidsUniqueAndTheTableOfOneSize) {
    const auto mac = makeScenario("quiet");
    const std::size_t size = sample(*mac).size();
    mac->machine.advance(days(30));
    const auto later = sample(*mac);
    EXPECT_EQ(later.size(), size);
    EXPECT_TRUE(std::is_sorted(later.begin(), later.end(),
                               [](const auto& a, const auto& b) { return a.pid <= b.pid; }));
    EXPECT_LT(later.back().pid, 99999);
}

TEST(Applications, AreFoundOpenedAndPictured) {
    const auto mac = makeScenario("full-disk");
    EXPECT_EQ(mac->workspace.applicationPath("app.nothing"), std::nullopt);
    const std::string path = mac->workspace.applicationPath("app.tidyvault.Tidyvault").value();
    mac->workspace.openApplication(path);
    mac->workspace.openApplication(path);
    EXPECT_EQ(processesOf(*mac, "Tidyvault"), 1);
    EXPECT_THAT(mac->machine.lock()->records.openedApplications, ElementsAre(path, path));
    EXPECT_TRUE(
        mac->workspace.openURL("x-apple.systempreferences:com.apple.wifi-settings-extension"));
    EXPECT_FALSE(mac->workspace.openURL("gopher://nowhere"));
    EXPECT_EQ(mac->machine.lock()->records.openedURLs.size(), 1U);
    const auto tile = mac->workspace.icon(path, 48).value().bytes;
    const std::string svg{reinterpret_cast<const char*>(tile.data()), tile.size()};
    EXPECT_THAT(svg, HasSubstr("width=\"48\""));
    EXPECT_THAT(svg, HasSubstr(">T</text></svg>"));
    EXPECT_EQ(mac->workspace.icon(mac->platform().root + "Applications/Tidyvault.app", 48)->bytes,
              tile);
    EXPECT_EQ(mac->workspace.icon("/Applications/Absent.app", 48), std::nullopt);
}

// Column for column what the tool on a Mac prints.
TEST(Tools, PrintTheMacsOwnFormats) {
    World world;
    const auto add = [&](std::int32_t pid, User user, const char* path, const char* arguments,
                         double cpu) {
        Process process;
        process.pid = pid;
        process.user = user;
        process.path = path;
        process.arguments = arguments;
        process.load.percent = cpu;
        process.cpuTimeBefore = Seconds{4523.456};
        world.processes.spawn(std::move(process));
    };
    add(1, root, "/sbin/launchd", "", 0.04);
    add(54321, ann, "/Applications/My App.app/Contents/MacOS/My App", "--type=gpu", 712.36);
    world.jobs = {{"com.example.mine", "/Applications/My App.app/Contents/MacOS/My App"},
                  {"com.example.idle", ""}};
    world.network.traffic = {{54321, 0, 0}};
    SimulatedMac mac{std::move(world)};
    const auto text = [&](std::size_t tool) {
        return mac.tools.run(everyTool.at(tool).first, everyTool.at(tool).second).stdout;
    };
    EXPECT_EQ(text(0), "    1     1     0 root              75:23.45      0   0.0 /sbin/launchd\n"
                       "54321     1   501 ann               75:23.45      0 712.4 "
                       "/Applications/My App.app/Contents/MacOS/My App\n");
    EXPECT_EQ(text(1), "    1      0 /sbin/launchd\n"
                       "54321      0 /Applications/My App.app/Contents/MacOS/My App --type=gpu\n");
    EXPECT_EQ(text(2), "PID\tStatus\tLabel\n54321\t0\tcom.example.mine\n-\t0\tcom.example.idle\n");
    EXPECT_EQ(text(4),
              ",bytes_in,bytes_out,\nMy App.54321,0,0,\n,bytes_in,bytes_out,\nMy App.54321,0,0,\n");
}

TEST(Failures, OfTools) {
    const auto mac = makeScenario("quiet");
    const auto ps = [&] { return mac->tools.run("/bin/ps", psArguments); };
    const auto launchFailure = [&]() -> std::errc {
        try {
            ps();
        } catch (const LaunchError& error) {
            return static_cast<std::errc>(error.code().value());
        }
        return {};
    };
    const Shell::Output good = ps();
    const auto with = [&](auto fault, const auto& check) {
        mac->machine.inject(fault);
        check();
        mac->machine.clearFailures();
    };
    for (const std::string& tool : {std::string{"/bin/ps"}, std::string{}}) {
        with(ToolMissing{tool},
             [&] { EXPECT_EQ(launchFailure(), std::errc::no_such_file_or_directory); });
        with(ToolNotPermitted{tool},
             [&] { EXPECT_EQ(launchFailure(), std::errc::permission_denied); });
        with(ToolFails{tool, 7, "no\n"}, [&] {
            EXPECT_EQ(ps(), (Shell::Output{7, "", "no\n"}));
            EXPECT_THROW(PSProcessSource(mac->tools, mac->machine).sample(), SamplerError);
        });
        with(ToolPrints{tool, "a\xff\n"}, [&] { EXPECT_EQ(ps().stdout, "a\xEF\xBF\xBD\n"); });
    }
    mac->machine.inject(ToolMissing{"/bin/launchctl"});
    EXPECT_EQ(ps(), good) << "one tool's failure is not another's";
    EXPECT_THROW(mac->tools.run("/bin/no-such-tool", {}), LaunchError);
    for (const auto& [tool, arguments] : everyTool) {
        if (tool != "/bin/launchctl") {
            EXPECT_EQ(mac->tools.run(tool, {"--other"}).status, 64) << tool;
        }
    }
}

TEST(Tools, TakeTheirTimeAndAnswerOfTheirEnd) {
    const auto mac = makeScenario("quiet");
    mac->tools.setTiming([&](Seconds duration) { mac->machine.advance(duration); });
    const TimePoint before = mac->machine.now();
    const SpeedResult result = SpeedTest::run(mac->tools, mac->machine);
    EXPECT_NEAR((result.measuredAt - before).count(), 25, 1e-6);
    mac->machine.inject(ToolTakes{"/bin/ps", Seconds{90}});
    EXPECT_NEAR((PSProcessSource{mac->tools, mac->machine}.sample().takenAt - before).count(), 115,
                1e-6);
}

TEST(Failures, AHangingToolAnswersWhenReleased) {
    const auto mac = makeScenario("quiet");
    mac->machine.inject(ToolHangs{"/bin/ps"});
    Shell::Output answer;
    std::thread caller{[&] { answer = mac->tools.run("/bin/ps", psArguments); }};
    while (mac->machine.lock()->records.hungCalls == 0) {
        std::this_thread::yield();
    }
    EXPECT_EQ(mac->tools.run("/bin/launchctl", {"list"}).status, 0) << "others go on";
    mac->machine.advance(Seconds{60});
    mac->machine.clearFailures();
    caller.join();
    EXPECT_EQ(answer, mac->tools.run("/bin/ps", psArguments));
}

// Every interface at once from several threads, while real time passes.
TEST(Machine, IsSafeFromManyThreads) {
    const auto mac = makeScenario("chrome-tabs");
    mac->machine.followRealTime();
    const TimePoint before = mac->machine.now();
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int round = 0; round < 20; ++round) {
                EXPECT_GT(sample(*mac).size(), 250U);
                mac->machine.advance(Seconds{30});
                mac->kernel.physFootprint(sample(*mac).back().pid);
                mac->windowServer.windowInfo();
                mac->network.wifiInterface()->rssiValue();
                mac->log.write(LogLevel::error, "s", "c", "m");
                mac->tools.run(
                    "/usr/bin/osascript",
                    {"-e", "tell application id \"com.google.Chrome\" to close front window"});
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_GE((mac->machine.now() - before).count(), 4 * 20 * 30);
    EXPECT_TRUE(mac->machine.lock()->browsers.at("com.google.Chrome").windows.empty());
    EXPECT_EQ(mac->machine.lock()->records.log.size(), 80U);
}

TEST(Failures, OfTheSystem) {
    const auto mac = makeScenario("out-of-memory");
    const std::int32_t own = mac->machine.lock()->processes.find("Figma")->pid;
    const auto signals = [&] { return SignalReader::read(mac->kernel, mac->machine, 0); };
    EXPECT_EQ(signals().pressure, Pressure::critical);
    EXPECT_TRUE(mac->kernel.physFootprint(own).has_value());
    EXPECT_EQ(mac->kernel.physFootprint(1), std::nullopt) << "another user's process";
    mac->machine.inject(SysctlFails{"vm.swapusage"});
    EXPECT_EQ(signals().swapUsedBytes, 0);
    EXPECT_EQ(signals().pressure, Pressure::critical);
    mac->machine.inject(SysctlFails{});
    mac->machine.inject(StatisticsFail{});
    mac->machine.inject(FootprintFails{});
    mac->machine.inject(VolumeUnreadable{});
    mac->machine.inject(LoginItemsRefuse{});
    mac->machine.inject(NothingOpens{});
    mac->machine.inject(WindowsUnknown{});
    mac->machine.inject(DisplaysUnknown{});
    EXPECT_EQ(signals().pressure, Pressure::normal);
    EXPECT_EQ(signals().diskTotalBytes, 0);
    EXPECT_EQ(MemoryStats::read(mac->kernel).used(), 0);
    EXPECT_EQ(mac->kernel.physFootprint(own), std::nullopt);
    EXPECT_FALSE(mac->loginItems.registerProgram());
    EXPECT_FALSE(mac->workspace.openURL("https://example.com/"));
    EXPECT_EQ(mac->windowServer.windowInfo(), std::nullopt);
    EXPECT_EQ(mac->windowServer.activeDisplays(16), std::nullopt);
    mac->machine.clearFailures();
    EXPECT_TRUE(mac->loginItems.registerProgram());
    EXPECT_EQ(mac->loginItems.status(), LoginItemStatus::enabled);
    std::array<std::byte, 4> small{};
    EXPECT_EQ(mac->kernel.sysctlbyname("hw.model", small), std::nullopt) << "does not fit";
    EXPECT_EQ(mac->kernel.sysctlbyname("no.such.name", small), std::nullopt);
}

} // namespace
} // namespace pacelet::Simulated
