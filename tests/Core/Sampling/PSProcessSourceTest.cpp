#include "Core/Sampling/PSProcessSource.h"

#include "tests/Support/FakeKernel.h"

#include <functional>
#include <gtest/gtest.h>

namespace pacelet {
namespace {

class Tool : public ToolRunner {
public:
    explicit Tool(std::function<Shell::Output()> answer) : answer_{std::move(answer)} {}
    Shell::Output run(const std::string& executable,
                      const std::vector<std::string>& arguments) override {
        commandLine = executable;
        for (const std::string& argument : arguments) {
            commandLine += " " + argument;
        }
        return answer_();
    }
    std::string commandLine;

private:
    std::function<Shell::Output()> answer_;
};

TEST(PSProcessSource, StampsTheSnapshotWhenPSHasEnded) {
    testing::FakeClock clock;
    Tool ps{[&] {
        clock.wall += Seconds{2};
        return Shell::Output{0, "7 1 501 ann 0:01.00 10 0.0 /bin/a\nbroken\n", "ignored"};
    }};
    const Snapshot snapshot = PSProcessSource{ps, clock}.sample();
    EXPECT_EQ(ps.commandLine, "/bin/ps -axo pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm=");
    EXPECT_EQ(snapshot.takenAt, clock.wall);
    ASSERT_EQ(snapshot.processes.size(), 1U);
    EXPECT_EQ(snapshot.processes[0].path, "/bin/a");
}

TEST(PSProcessSource, TellsFailuresApart) {
    testing::FakeClock clock;
    Tool failing{[] { return Shell::Output{1, "7 1 501 ann 0:01.00 10 0.0 /bin/a\n", ""}; }};
    try {
        PSProcessSource{failing, clock}.sample();
        FAIL() << "a failing ps gave a snapshot";
    } catch (const SamplerError& error) {
        EXPECT_EQ(error, SamplerError::psFailed(1));
        EXPECT_FALSE(error == SamplerError::psFailed(2));
    }
    Tool missing{[]() -> Shell::Output {
        throw LaunchError{"/bin/ps", std::make_error_code(std::errc::no_such_file_or_directory)};
    }};
    EXPECT_THROW((PSProcessSource{missing, clock}.sample()), LaunchError);

    Tool rubbish{[] { return Shell::Output{0, "no table at all\n", ""}; }};
    EXPECT_TRUE((PSProcessSource{rubbish, clock}.sample().processes.empty()));
}

TEST(PSProcessSource, ListsArgumentsWhateverTheStatus) {
    Tool ps{[] { return Shell::Output{1, " 1 2 args\n", ""}; }};
    EXPECT_EQ(PSProcessSource::argsListing(ps), " 1 2 args\n");
    EXPECT_EQ(ps.commandLine, "/bin/ps -axo pid=,rss=,args=");
}

TEST(PSProcessSource, ListsLaunchJobsWhateverTheStatus) {
    Tool launchctl{[] { return Shell::Output{1, "PID\tStatus\tLabel\n12\t0\tjob\n", ""}; }};
    const auto jobs = PSProcessSource::launchctlList(launchctl);
    EXPECT_EQ(jobs, (std::unordered_map<std::string, std::int32_t>{{"job", 12}}));
    EXPECT_EQ(launchctl.commandLine, "/bin/launchctl list");
}

} // namespace
} // namespace pacelet
