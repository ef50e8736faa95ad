#include "Core/Sampling/LaunchctlList.h"
#include "Core/Sampling/PSParser.h"
#include "Core/Sampling/PSProcessSource.h"
#include "tests/Support/FakeKernel.h"
#include "tests/Support/FakeToolRunner.h"
#include "tests/Support/Table.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <string>
#include <vector>

namespace pacelet {
namespace {

TEST(PSParser, ReadsColumnsAndKeepsBlanksInPaths) {
    const auto samples = PSParser::parse(
        "    1     0     0 root       9:01.72   12345   0.3 /sbin/launchd\n"
        "  812     1   501 ann     62:03.500  2048  150.500 /Applications/Two Words.app/Contents/"
        "MacOS/Two  Words \n"
        "+3 -4 5 u 0:00.00 -1 -2.5  bare");
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_EQ(samples[0], (ProcessSample{1, 0, 0, "root", 541.72, std::int64_t{12345} * 1024, 0.3,
                                         "/sbin/launchd"}));
    EXPECT_EQ(samples[1].path, "/Applications/Two Words.app/Contents/MacOS/Two  Words ");
    EXPECT_EQ(samples[1].name(), "Two  Words ");
    EXPECT_EQ(samples[1].cpuTime, 3723.5);
    EXPECT_EQ(samples[2], (ProcessSample{3, -4, 5, "u", 0, -1024, -2.5, " bare"}))
        << "only the one blank behind the seventh column divides";
}

TEST(PSParser, NamesProcessesByWhatFollowsTheLastSlash) {
    EXPECT_EQ(executableName("/usr/bin/top"), "top");
    EXPECT_EQ(executableName("top"), "top");
    EXPECT_EQ(executableName("/usr/bin/"), "");
    EXPECT_EQ(executableName(""), "");
}

TEST(PSParser, SkipsBadLinesAndKeepsTheirNeighbours) {
    const std::string good = "7 1 501 ann 0:01.00 10 0.0 /bin/good";
    for (const auto& [line] : testing::rows<1>("Sampling", "lines that are no process")) {
        const auto samples = PSParser::parse(good + "\n\n" + line + "\n" + good + "\n");
        EXPECT_EQ(samples.size(), 2U) << line;
    }
    EXPECT_TRUE(PSParser::parse("").empty());
    EXPECT_DEATH(PSParser::parse("7 1 501 ann 0:01.00 9223372036854775807 0.0 /bin/a"),
                 "a resident size exceeds 64 bits");
}

TEST(PSParser, FoldsCPUTimes) {
    for (const auto& [text, seconds] : testing::rows<2>("Sampling", "CPU times")) {
        EXPECT_EQ(testing::shown(PSParser::cpuSeconds(text)), seconds) << text;
    }
}

/// Ordinary lines are read in one pass; a sign sends a line the general way. Both must agree.
TEST(PSParser, ReadsOrdinaryLinesLikeAllOthers) {
    EXPECT_TRUE(rc::check("with and without a sign", [] {
        const auto digits = [](int most) {
            return *rc::gen::resize(most, rc::gen::nonEmpty(rc::gen::container<std::string>(
                                              rc::gen::inRange('0', char('9' + 1)))));
        };
        const std::string rest = " 1 " + digits(10) + " ann " + digits(4) + ":" + digits(3) + "." +
                                 digits(3) + "  " + digits(10) + " " + digits(5) + "." + digits(3) +
                                 " /a b/c";
        const std::string pid = digits(10);
        RC_ASSERT(PSParser::parse(pid + rest) == PSParser::parse("+" + pid + rest));
    }));
}

TEST(LaunchctlList, KeepsWhatHasAPidAndALabel) {
    EXPECT_EQ(parseLaunchctlList("PID\tStatus\tLabel\n"
                                 "123\t0\tcom.a\n"
                                 "-\t0\tcom.b\n"
                                 "\n"
                                 "-7\t-9\tcom.c\textra\n"
                                 "\t\t+8\t\t0\tcom. d \t\n"
                                 "2147483648\t0\tcom.e\n"
                                 "12x\t0\tcom.f\n"
                                 "12\tcom.g\n"
                                 " 12\t0\tcom.h\n"
                                 "5\t0\tcom.a\n"
                                 "2147483647\t0\tcom.i"),
              (RunningJobs{{"com.a", 5}, {"com.c", -7}, {"com. d ", 8}, {"com.i", 2147483647}}));
    for (const char* text : {"", "\n\n", "PID\tStatus\tLabel\n", "123\t0\tcom.a"}) {
        EXPECT_TRUE(parseLaunchctlList(text).empty()) << text;
    }
    EXPECT_EQ(parseLaunchctlList("\n\nany\r\n1\t0\tcom.a\r\n"), (RunningJobs{{"com.a\r", 1}}))
        << "only a line feed ends a line";
}

class PSProcessSources : public ::testing::Test {
protected:
    void say(std::int32_t status, const std::string& output) {
        tools.answer = [this, status, output](const auto&) {
            clock.wall += Seconds{2};
            return Shell::Output{status, output, "ignored"};
        };
    }
    std::string lastCommand() const {
        return tools.calls.back().executable +
               fmt::format(" {}", fmt::join(tools.calls.back().arguments, " "));
    }

    testing::FakeClock clock;
    testing::FakeToolRunner tools;
};

TEST_F(PSProcessSources, StampTheSnapshotWhenPSHasEnded) {
    say(0, "7 1 501 ann 0:01.00 10 0.0 /bin/a\nbroken\n");
    const Snapshot snapshot = PSProcessSource{tools, clock}.sample();
    EXPECT_EQ(lastCommand(), "/bin/ps -axo pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm=");
    EXPECT_EQ(snapshot.takenAt, clock.wall);
    ASSERT_EQ(snapshot.processes.size(), 1U);
    EXPECT_EQ(snapshot.processes[0].path, "/bin/a");
}

TEST_F(PSProcessSources, TellFailuresApart) {
    say(1, "7 1 501 ann 0:01.00 10 0.0 /bin/a\n");
    try {
        PSProcessSource{tools, clock}.sample();
        FAIL() << "a failing ps gave a snapshot";
    } catch (const SamplerError& error) {
        EXPECT_EQ(error, SamplerError::psFailed(1));
        EXPECT_FALSE(error == SamplerError::psFailed(2));
    }
    tools.failToLaunch();
    EXPECT_THROW((PSProcessSource{tools, clock}.sample()), LaunchError);
    say(0, "no table at all\n");
    EXPECT_TRUE((PSProcessSource{tools, clock}.sample().processes.empty()));
}

TEST_F(PSProcessSources, TakeTheOtherListsWhateverTheStatus) {
    say(1, " 1 2 args\n");
    EXPECT_EQ(PSProcessSource::argsListing(tools), " 1 2 args\n");
    EXPECT_EQ(lastCommand(), "/bin/ps -axo pid=,rss=,args=");
    say(1, "PID\tStatus\tLabel\n12\t0\tjob\n");
    const auto jobs = PSProcessSource::launchctlList(tools);
    EXPECT_EQ(jobs, (std::unordered_map<std::string, std::int32_t>{{"job", 12}}));
    EXPECT_EQ(lastCommand(), "/bin/launchctl list");
}

} // namespace
} // namespace pacelet
