#include "Hosts/Linux/Proc/MemoryInfo.h"
#include "Hosts/Linux/Proc/PressureStall.h"
#include "Hosts/Linux/Proc/ProcStat.h"
#include "Hosts/Linux/Proc/ProcessMemory.h"
#include "Hosts/Linux/Proc/ShownText.h"
#include "Hosts/Linux/ThermalZones.h"
#include "tests/Support/Table.h"

#include <gtest/gtest.h>
#include <limits>
#include <rapidcheck.h>
#include <string>

namespace pacelet::Linux {
namespace {

/// A line as the kernel writes it, with the figures that we read set apart from all others.
std::string statLine(std::int32_t pid, const std::string& comm, const ProcStat& stat) {
    const auto text = [](auto number) { return ' ' + std::to_string(number); };
    return std::to_string(pid) + " (" + comm + ") " + stat.state + text(stat.ppid) + " 91 92" +
           text(stat.terminal) + " -1" + text(stat.isKernelThread ? 2129984 : 4194304) +
           text(stat.minorFaults) + " 94" + text(stat.majorFaults) + " 96" + text(stat.userTime) +
           text(stat.systemTime) + text(stat.reapedUserTime) + text(stat.reapedSystemTime) +
           " 20 0 1 0" + text(stat.startTime) + " 99" + text(stat.residentPages) +
           " 18446744073709551615" + text(stat.startCode) + " 101" + text(stat.startStack) +
           " 0 0 0\n";
}

ProcStat someStat(std::int32_t pid, std::string_view comm) {
    return {pid, comm, 'S', 7, 34816, false, 93, 95, 1234, 56, 97, 98, 146653, 380, 4096, 8192};
}

TEST(ProcStat, SurvivesWhateverAProgramCallsItself) {
    const auto reads = [](const std::string& comm) {
        const ProcStat expected = someStat(42, comm);
        const std::string line = statLine(42, comm, expected);
        // With and without the last line feed.
        return parseProcStat(line) == expected &&
               parseProcStat(std::string_view{line}.substr(0, line.size() - 1)) == expected;
    };
    for (const char* comm :
         {"bash", "", " ", "(a b ) ( c d)", ") S 1 2 3 (", "two\nlines", "((("}) {
        EXPECT_TRUE(reads(comm)) << comm;
    }
    EXPECT_TRUE(rc::check("any name is read back",
                          [&](const std::string& comm) { RC_ASSERT(reads(comm)); }));
}

TEST(ProcStat, TakesTheExtremesAndKnowsKernelThreads) {
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    const ProcStat extreme{std::numeric_limits<std::int32_t>::max(),
                           "x",
                           'Z',
                           0,
                           -1,
                           true,
                           most,
                           most,
                           most,
                           most,
                           most,
                           most,
                           most,
                           std::numeric_limits<std::int64_t>::min(),
                           most,
                           most};
    EXPECT_EQ(parseProcStat(statLine(extreme.pid, "x", extreme)), extreme);
    EXPECT_TRUE(extreme.hasEnded());
}

TEST(ProcStat, AKernelThatTellsLessStillGivesTheRest) {
    const ProcStat full = someStat(42, "bash");
    const std::string line = statLine(42, "bash", full);
    ProcStat bare = full;
    bare.startCode = bare.startStack = 0;
    EXPECT_EQ(parseProcStat(line.substr(0, line.find(" 18446744073709551615"))), bare);
}

TEST(ProcStat, RefusesWhatIsNoSuchLine) {
    const std::string line = statLine(42, "bash", someStat(42, "bash"));
    for (const std::string& bad :
         {std::string{}, std::string{"\n\n"}, std::string{"42"}, std::string{"42 (bash)"},
          std::string{"42 )bash( S 1"}, "x" + line, line.substr(0, line.find(" 1234")),
          std::string{line}.replace(line.find(" 1234"), 5, " 12x4"),
          std::string{line}.replace(line.find(" 1234"), 5, " 18446744073709551616"),
          std::string{line}.replace(line.find(" S "), 3, " SS ")}) {
        EXPECT_EQ(parseProcStat(bad), std::nullopt) << bad;
    }
}

TEST(ProcessMemory, IsReadOutOfBothFiles) {
    for (const auto& [status, rollup, expected] :
         pacelet::testing::rows<3>("Linux", "memory of processes")) {
        const auto memory =
            rollup.empty() ? parseStatusMemory(status) : parseSharedOut(status + rollup);
        const std::string found = memory ? std::to_string(memory->anonymous) + ' ' +
                                               std::to_string(memory->shared) + ' ' +
                                               std::to_string(memory->swapped)
                                         : "none";
        EXPECT_EQ(found, expected) << status << rollup;
    }
}

constexpr std::string_view memoryText = "MemTotal:       1000 kB\n"
                                        "MemFree:         200 kB\n"
                                        "MemAvailable:    500 kB\n"
                                        "\n"
                                        "Unheard of:    many kB\n"
                                        "Buffers:          20 kB\n"
                                        "Cached:          250 kB\n"
                                        "Unevictable:      40 kB\n"
                                        "SwapTotal:       300 kB\n"
                                        "SwapFree:        100 kB\n"
                                        "Zswap:            30 kB\n"
                                        "AnonPages:       300 kB\n"
                                        "Shmem:            50 kB\n"
                                        "SReclaimable:     60 kB"; // no last line feed

TEST(MemoryInfo, CountsEveryByteOnce) {
    const auto split = memoryStatistics(parseMemoryInfo(memoryText), 1024, 1'010 << 10);
    ASSERT_TRUE(split);
    EXPECT_EQ(split->free_count, 200U);
    EXPECT_EQ(split->internal_page_count, 350U) << "anonymous and shared";
    EXPECT_EQ(split->external_page_count, 280U) << "files, buffers and reclaimable, less shared";
    EXPECT_EQ(split->compressor_page_count, 30U);
    EXPECT_EQ(split->wire_count, 150U) << "the rest of what is installed";
    EXPECT_EQ(split->purgeable_count, 0U);
}

TEST(MemoryInfo, NeverAddsUpToMoreThanThereIs) {
    EXPECT_TRUE(rc::check("the parts fill the total", [] {
        const auto figure = rc::gen::inRange<std::int64_t>(0, 2000);
        MemoryInfo info;
        info.total = *figure;
        info.free = *figure;
        info.cached = *figure;
        info.anonymous = *figure;
        info.shared = *figure;
        info.reclaimable = *figure;
        info.zswap = *figure;
        const auto split = memoryStatistics(info, 1, 0);
        RC_ASSERT(split.has_value());
        RC_ASSERT(split->free_count + split->internal_page_count + split->external_page_count +
                      split->compressor_page_count + split->wire_count ==
                  *info.total);
    }));
}

TEST(MemoryInfo, SaysNothingWithoutWhatItNeeds) {
    for (const char* key : {"MemTotal", "MemFree", "Cached", "AnonPages"}) {
        std::string text{memoryText};
        text.replace(text.find(key), 1, "?");
        EXPECT_FALSE(memoryStatistics(parseMemoryInfo(text), 1024, 0)) << key;
    }
    EXPECT_FALSE(memoryStatistics(parseMemoryInfo(memoryText), 0, 0)) << "no page size";
    EXPECT_EQ(parseMemoryInfo(""), MemoryInfo{});
    EXPECT_FALSE(swapUsage(parseMemoryInfo("SwapTotal: 4 kB\nSwapFree: x kB"), 1024));
}

TEST(MemoryInfo, TellsSwap) {
    const auto swap = swapUsage(parseMemoryInfo(memoryText), 4096);
    ASSERT_TRUE(swap);
    EXPECT_EQ(swap->xsu_total, 300U * 1024);
    EXPECT_EQ(swap->xsu_used, 200U * 1024);
    // More free than there is, as between two changes of the swap devices.
    EXPECT_EQ(swapUsage(parseMemoryInfo("SwapTotal: 1 kB\nSwapFree: 2 kB"), 4096)->xsu_used, 0U);
}

TEST(PressureStall, CountsTogetherWithWhatIsAvailable) {
    for (const auto& [some, full, available, expected] :
         pacelet::testing::rows<4>("Linux", "levels of memory pressure")) {
        const PressureStall stall = parsePressureStall(
            "some avg10=" + some + " avg60=99.00 avg300=99.00 total=1\n\nfull avg10=" + full +
            " avg60=99.00 avg300=99.00 total=18446744073709551615");
        const MemoryInfo info =
            parseMemoryInfo("MemTotal: 1000 kB\nMemAvailable: " + available + " kB\n");
        EXPECT_EQ(pacelet::testing::shown(pressureLevel(stall, availableShare(info))), expected)
            << some << ' ' << full << ' ' << available;
    }
    EXPECT_EQ(parsePressureStall("some avg60=50.00\nfulltime avg10=50.00\n"), PressureStall{});
}

TEST(ThermalZones, RiseWithTheTripPoints) {
    const TripPoints all{70'000, 90'000, 105'000};
    const std::pair<int, int> states[] = {{69'999, 0}, {70'000, 1},  {89'999, 1}, {90'000, 2},
                                          {99'999, 2}, {100'000, 3}, {-40'000, 0}};
    for (const auto& [temperature, expected] : states) {
        EXPECT_EQ(thermalState(temperature, all), expected) << temperature;
    }
    EXPECT_EQ(thermalState(200'000, {}), 0) << "a zone without points tells nothing";
    EXPECT_EQ(thermalState(50'000, {0, -274'000, std::nullopt}), 0) << "points that are not set";
    EXPECT_TRUE(isProcessorZone("x86_pkg_temp"));
    EXPECT_TRUE(isProcessorZone("cpu-thermal"));
    EXPECT_FALSE(isProcessorZone("iwlwifi_1"));
    EXPECT_FALSE(isProcessorZone(""));
}

TEST(ShownText, NeverBreaksALine) {
    EXPECT_EQ(shownPath("/a b\n/\x1b[2Jc"), "/a b?/?[2Jc");
    EXPECT_EQ(shownPath("/caf\xC3\xA9/\xFF"), "/caf\xC3\xA9/\xEF\xBF\xBD");
    EXPECT_EQ(shownPath(""), "?");
    EXPECT_EQ(shownWord("DOMAIN user\t1"), "DOMAIN_user?1");
    using namespace std::string_view_literals;
    EXPECT_EQ(shownArguments("prog\0--flag\0two\nlines\0\0\0"sv), "prog --flag two?lines");
    EXPECT_EQ(shownArguments("\0\0"sv), "");
}

} // namespace
} // namespace pacelet::Linux
