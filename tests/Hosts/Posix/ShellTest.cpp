#include "Hosts/Posix/Shell.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace pacelet {
namespace {

Shell::Output sh(const std::string& script) {
    return Shell::run("/bin/sh", {"-c", script});
}

std::size_t openDescriptors() {
    const std::filesystem::directory_iterator entries{"/proc/self/fd"};
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

TEST(Shell, CollectsBothStreamsAndTheStatus) {
    EXPECT_EQ(sh("echo out; echo err >&2; exit 3"), (Shell::Output{3, "out\n", "err\n"}));
    EXPECT_EQ(sh(":"), (Shell::Output{0, "", ""}));
    EXPECT_EQ(sh("kill -9 $$").status, SIGKILL);
    const auto output = Shell::run("/usr/bin/printf", {"[%s]", "a b", "", "$HOME*", "\"'"});
    EXPECT_EQ(output.stdout, "[a b][][$HOME*][\"']") << "arguments as they stand";
    EXPECT_EQ(sh("printf 'a\\377b'").stdout, "a\xEF\xBF\xBD"
                                             "b");
    EXPECT_EQ(sh("printf '\\303' >&2").stderr, "\xEF\xBF\xBD");
}

TEST(Shell, TakesMuchOutputOnBothStreams) {
    const auto output = sh("head -c 5000000 /dev/zero | tr '\\0' e >&2; "
                           "head -c 3000000 /dev/zero | tr '\\0' o");
    EXPECT_EQ(output.stdout, std::string(3'000'000, 'o'));
    EXPECT_EQ(output.stderr, std::string(5'000'000, 'e'));
}

TEST(Shell, SaysWhyAToolCannotStart) {
    const auto reasonOf = [](const std::string& path) -> std::error_code {
        try {
            Shell::run(path, {});
        } catch (const LaunchError& error) {
            EXPECT_EQ(error.executable(), path);
            return error.code();
        }
        return {};
    };
    EXPECT_EQ(reasonOf("/no/such/tool"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(reasonOf("/etc/passwd"), std::errc::permission_denied);
    EXPECT_EQ(reasonOf("/"), std::errc::permission_denied);
}

TEST(Shell, LeavesNothingBehindAndLetsNothingThrough) {
    // A descriptor of ours without the close-on-exec mark, as a careless library leaves it.
    const int leaky = ::open("/dev/null", O_RDONLY); // NOLINT(android-cloexec-open)
    ASSERT_GE(leaky, 3);
    const std::size_t before = openDescriptors();
    EXPECT_EQ(sh("ls /proc/self/fd").stdout, "0\n1\n2\n3\n") << "3 is the listing's own";
    EXPECT_THROW(Shell::run("/no/such/tool", {}), LaunchError);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child is left, dead or alive";
    ::close(leaky);
}

TEST(Shell, StartsChildrenWithOrdinarySignals) {
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    EXPECT_EQ(sh("kill -TERM $$; echo survived").status, SIGTERM);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST(Shell, WorksWithoutStandardStreams) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(0);
        ::close(1);
        ::close(2);
        const auto output = sh("echo out; echo err >&2");
        ::_exit(output.stdout == "out\n" && output.stderr == "err\n" ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST(Shell, SaysSoWhereTheSystemKeepsTheStatus) {
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_THROW(sh("exit 3"), LaunchError);
    std::signal(SIGCHLD, before);
}

TEST(Shell, RunsFromManyThreadsAtATime) {
    std::vector<std::thread> threads;
    std::vector<Shell::Output> outputs(8);
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        threads.emplace_back([index, &outputs] {
            for (int round = 0; round < 5; ++round) {
                outputs[index] = sh("echo " + std::to_string(index));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        EXPECT_EQ(outputs[index].stdout, std::to_string(index) + "\n");
    }
}

} // namespace
} // namespace pacelet
