#include "Core/Support/Files.h"
#include "Core/Support/StandardStreams.h"
#include "tests/Support/TemporaryFolder.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <unistd.h>

namespace pacelet {
namespace {

TEST(Files, AreReadAsFarAsTheyGo) {
    const testing::TemporaryFolder folder;
    const std::string file = folder.write("a", "abc");
    std::string text = "earlier";
    EXPECT_FALSE(readFile(file, 3, text));
    EXPECT_EQ(text, "abc");
    EXPECT_EQ(readFile(file, 2, text), std::errc::file_too_large);
    EXPECT_EQ(text, "");
    EXPECT_EQ(readFile(folder.path(), 9, text), std::errc::invalid_argument);
    errno = EINTR; // of some call before
    EXPECT_EQ(readBeginning(file, 1) + readBeginning(file, 9), "aabc");
    EXPECT_EQ(readBeginning("/proc/self/mem", 9), "") << "a file that cannot be read";
    const std::string pieces = readBeginning("/proc/self/smaps", 9'000); // a page at a time
    EXPECT_TRUE(pieces.empty() ||
                (pieces.size() == 9'000 && pieces.find('\0') == std::string::npos));
}

TEST(StandardStreams, TakeWholeLines) {
    ::testing::internal::CaptureStderr();
    StandardStreams::complain("why");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "why\n");
    ::testing::internal::CaptureStdout();
    std::fputs("first, ", stdout);
    EXPECT_TRUE(StandardStreams::print("then"));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "first, then");
}

TEST(StandardStreams, AreMendedAfterACarelessParent) {
    const auto start = [] {
        const int unused = ::dup(STDOUT_FILENO);
        std::signal(SIGCHLD, SIG_IGN);
        for (const int descriptor : {unused, STDIN_FILENO, STDERR_FILENO}) {
            ::close(descriptor);
        }
        StandardStreams::secure();
        const bool areMended = ::dup(STDOUT_FILENO) == unused && // the lowest that is free
                               std::signal(SIGPIPE, SIG_DFL) == SIG_IGN &&
                               std::signal(SIGCHLD, SIG_DFL) == SIG_DFL;
        ::_exit(areMended ? 0 : 1);
    };
    EXPECT_EXIT(start(), ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace pacelet
