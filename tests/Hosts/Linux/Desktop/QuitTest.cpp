#include "Core/Fixes/FixRunner.h"
#include "Core/Sampling/AppGrouper.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Hosts/Linux/Desktop/RunningCopy.h"
#include "Hosts/Linux/LinuxHost.h"
#include "tests/Support/ChildProgram.h"
#include "tests/Support/Processes.h"
#include "tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <linux/sched.h>
#include <stdexcept>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace pacelet::Linux {
namespace {

namespace fs = std::filesystem;
using pacelet::testing::TemporaryFolder;

enum class Manners { obedient, stubborn };

/// A program that waits to be ended, as our child.
class Program : public pacelet::testing::ChildProgram {
public:
    Program(const std::string& path, Manners manners)
        : ChildProgram{
              manners == Manners::obedient
                  ? std::vector<std::string>{path, "60"}
                  // What is ignored stays so in the program that is run next.
                  : std::vector<std::string>{"/bin/sh", "-c", "trap '' TERM; exec \"$0\" 60", path},
              {}} {}

    /// Waits for its end: the signal that ended it, or 0.
    int wait() { return -end().value_or(0); }
};

/// This machine with a menu of one application, "Sleeper".
class QuitTest : public ::testing::Test {
protected:
    QuitTest() {
        folder.write("applications/sleeper.desktop",
                     "[Desktop Entry]\nType=Application\nName=Sleeper\nExec=" + program + "\n");
        fs::create_directories(fs::path{program}.parent_path());
        fs::copy_file("/bin/sleep", program);
    }

    LinuxSettings settings() const {
        LinuxSettings own;
        own.places = {{(folder.path() / "applications").string()}, {}, {}, folder.path().string()};
        own.configFolder = (folder.path() / "config").string();
        own.display.clear();
        return own;
    }

    std::vector<ProcessUsage> listed() {
        std::vector<ProcessUsage> usages;
        for (const ProcessSample& sample :
             PSProcessSource{host.tools(), host.clock()}.sample().processes) {
            if (sample.path.starts_with(bundle)) {
                usages.push_back(
                    pacelet::testing::usage(sample.pid, sample.path, 0, 0, sample.uid));
            }
        }
        return usages;
    }

    /// The application's group, once the listing shows all `count` processes of it.
    ProcessGroup groupOf(std::size_t count) {
        pacelet::testing::eventually([&] { return listed().size() == count; });
        auto groups = AppGrouper::group(listed(), ::getuid());
        if (groups.size() != 1) {
            throw std::runtime_error{"the program does not appear as an application"};
        }
        return groups.front();
    }

    FixOutcome outcome(QuitAttempt attempt) {
        std::optional<FixOutcome> result;
        pacelet::testing::eventually(
            [&] { return (result = attempt.poll(host.clock().monotonicNow())).has_value(); },
            std::chrono::minutes{1});
        return result.value();
    }

    TemporaryFolder folder;
    const std::string bundle = "/Applications/Sleeper.app";
    const std::string program = (folder.path() / "opt/sleeper/sleeper").string();
    LinuxHost host{settings()};
    Platform platform{host.platform()};
    FixRunner fixes{platform};
};

TEST_F(QuitTest, ARealProgramGoesWhenAskedAndWhenForced) {
    struct Case {
        bool force;
        Manners manners;
        int signal;
    };
    for (const Case& each :
         {Case{false, Manners::obedient, SIGTERM}, Case{true, Manners::obedient, SIGKILL},
          Case{true, Manners::stubborn, SIGKILL}}) {
        Program first{program, each.manners};
        Program second{program, each.manners};
        const ProcessGroup group = groupOf(2);
        ASSERT_EQ(group.appPath, bundle);
        EXPECT_TRUE(group.quittable);
        ASSERT_EQ(platform.workspace.runningApplications().size(), 2U);
        EXPECT_TRUE(platform.workspace.isRunning("sleeper"));

        EXPECT_EQ(outcome(fixes.quit(group, each.force, Seconds{20})), FixOutcome::done());
        EXPECT_FALSE(platform.workspace.isRunning("sleeper")) << "though not waited for";
        EXPECT_EQ(first.wait(), each.signal);
        EXPECT_EQ(second.wait(), each.signal);
        EXPECT_EQ(outcome(fixes.quit(group, each.force, Seconds{20})), FixOutcome::alreadyGone());
    }
}

TEST_F(QuitTest, AProgramThatIgnoresTheRequestIsReportedAsRunning) {
    const Program stubborn{program, Manners::stubborn};
    const Program obedient{program, Manners::obedient};
    const ProcessGroup group = groupOf(2);
    EXPECT_EQ(outcome(fixes.quit(group, false, Seconds{0.4})), FixOutcome::stillRunning());
    const auto left = platform.workspace.runningApplications();
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left.front()->bundlePath(), bundle);
    EXPECT_EQ(left.front()->executablePath(), bundle + "/Contents/MacOS/sleeper");
    EXPECT_EQ(left.front()->bundleIdentifier(), "sleeper");
    EXPECT_FALSE(left.front()->isTerminated());
    EXPECT_EQ(::kill(stubborn.pid(), 0), 0);
}

TEST_F(QuitTest, AHandleOutlivesItsProgramAndMeetsNoOther) {
    std::shared_ptr<RunningApplication> handle;
    {
        const Program ended{program, Manners::obedient};
        groupOf(1);
        handle = platform.workspace.runningApplications().at(0);
        EXPECT_FALSE(handle->isTerminated());
    }
    EXPECT_TRUE(handle->isTerminated());
    EXPECT_FALSE(handle->terminate());
    EXPECT_FALSE(handle->forceTerminate());
}

TEST_F(QuitTest, AReusedNumberIsNeverHit) {
    // Another program has the number of the copy that was listed: its start tells.
    Program innocent{program, Manners::obedient};
    groupOf(1);
    std::vector<std::int32_t> asked;
    const WindowCloser closer = [&](const std::vector<std::int32_t>& pids) {
        asked.insert(asked.end(), pids.begin(), pids.end());
        return false;
    };
    const auto proc = std::make_shared<const FolderReader>("/proc");
    const ProcessIdentity past{innocent.pid(), 1};
    RunningCopy copy{{bundle, "sleeper", program, {past}, {past}}, proc, closer};
    EXPECT_TRUE(copy.isTerminated());
    EXPECT_FALSE(copy.terminate());
    EXPECT_FALSE(copy.forceTerminate());
    EXPECT_TRUE(asked.empty()) << "windows are found by the number alone";
    // Had it been hit, it would be gone by now.
    std::this_thread::sleep_for(std::chrono::milliseconds{50});
    EXPECT_EQ(listed().size(), 1U);
}

/// A child under a number of our choice, which waits to be ended; -1 where that is not allowed.
pid_t childWithNumber(pid_t number) {
    clone_args arguments{};
    arguments.exit_signal = SIGCHLD;
    arguments.set_tid = reinterpret_cast<std::uint64_t>(&number);
    arguments.set_tid_size = 1;
    const auto child = static_cast<pid_t>(::syscall(SYS_clone3, &arguments, sizeof arguments));
    if (child == 0) {
        ::pause();
        ::_exit(0);
    }
    return child;
}

TEST_F(QuitTest, ANumberReusedUnderAHandleIsNotHit) {
    std::shared_ptr<RunningApplication> handle;
    pid_t number = 0;
    {
        const Program ended{program, Manners::obedient};
        number = ended.pid();
        groupOf(1);
        handle = platform.workspace.runningApplications().at(0);
    }
    if (childWithNumber(number) != number) {
        GTEST_SKIP() << "this user may not choose the number of a process";
    }
    EXPECT_TRUE(handle->isTerminated());
    EXPECT_FALSE(handle->terminate());
    EXPECT_FALSE(handle->forceTerminate());
    EXPECT_EQ(::waitpid(number, nullptr, WNOHANG), 0) << "the newcomer still runs";
    ::kill(number, SIGKILL);
    ::waitpid(number, nullptr, 0);
}

TEST_F(QuitTest, WindowsAreAskedBeforeTheProcessIs) {
    Program windowed{program, Manners::obedient};
    Program helper{program, Manners::stubborn};
    groupOf(2);
    auto proc = std::make_shared<const FolderReader>("/proc");
    const auto identityOf = [&](std::int32_t pid) {
        ReadBuffer buffer;
        const auto text = proc->read((std::to_string(pid) + "/stat").c_str(), buffer);
        return ProcessIdentity{pid,
                               parseProcStat(text.value_or("")).value_or(ProcStat{}).startTime};
    };
    std::vector<std::int32_t> asked;
    RunningCopy copy{
        {bundle, "sleeper", program, {identityOf(windowed.pid())}, {identityOf(helper.pid())}},
        proc,
        [&](const std::vector<std::int32_t>& pids) {
            asked = pids;
            return true;
        }};
    EXPECT_TRUE(copy.terminate());
    EXPECT_EQ(asked, (std::vector{windowed.pid(), helper.pid()}));
    EXPECT_FALSE(copy.isTerminated()) << "no signal beside the request";
    EXPECT_TRUE(copy.forceTerminate());
    EXPECT_EQ(windowed.wait(), SIGKILL);
    EXPECT_EQ(helper.wait(), SIGKILL) << "helpers go with their application";
    EXPECT_TRUE(copy.isTerminated());
}

} // namespace
} // namespace pacelet::Linux
