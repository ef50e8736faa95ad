#include "Core/Support/Files.h"
#include "Core/Support/StandardStreams.h"
#include "tests/Support/TemporaryFolder.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace pacelet {
namespace {

TEST(Files, AreReadAsFarAsTheyGo) {
    const testing::TemporaryFolder folder;
    const std::string file = folder.write("a", "abc");
    std::string text = "earlier";
    errno = EINTR; // of some call before
    EXPECT_FALSE(readFile(file, 3, text));
    EXPECT_EQ(text, "abc");
    EXPECT_EQ(readFile(file, 2, text), std::errc::file_too_large);
    EXPECT_EQ(text, "");
    EXPECT_EQ(readFile(folder.path(), 9, text), std::errc::invalid_argument);
    EXPECT_EQ(readBeginning(file, 2) + readBeginning(file, 9), "ababc");
    EXPECT_EQ(readBeginning("/proc/self/mem", 9), "") << "a file that cannot be read";
}

TEST(StandardStreams, TakeWholeLines) {
    ::testing::internal::CaptureStderr();
    StandardStreams::complain("why");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "why\n");
}

} // namespace
} // namespace pacelet
