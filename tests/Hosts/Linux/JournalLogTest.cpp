#include "Hosts/Linux/JournalLog.h"
#include "Hosts/Linux/LinuxHost.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <string>

namespace pacelet::Linux {
namespace {

using namespace std::string_literals;

TEST(JournalEntry, TellsItsFieldsAndFramesWhatHoldsLineFeeds) {
    EXPECT_EQ(journalEntry(LogLevel::error, "app.pacelet.Pacelet", "monitor", "sample failed: x=1"),
              "MESSAGE=sample failed: x=1\nPRIORITY=3\nSYSLOG_IDENTIFIER=pacelet\n"
              "SUBSYSTEM=app.pacelet.Pacelet\nCATEGORY=monitor\n");
    EXPECT_EQ(journalEntry(LogLevel::information, "s", "c", "two\nlines\nPRIORITY=0"),
              "MESSAGE\n\x14\0\0\0\0\0\0\0two\nlines\nPRIORITY=0\nPRIORITY=6\n"
              "SYSLOG_IDENTIFIER=pacelet\nSUBSYSTEM=s\nCATEGORY=c\n"s);
}

TEST(JournalLog, SendsOneDatagramAnEntryAndFallsBackToStandardError) {
    const pacelet::testing::TemporaryFolder folder;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder.path() / "socket";
    std::memcpy(address.sun_path, path.data(), path.size());
    const int journal = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(journal, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);

    JournalLog log{path};
    LinuxSettings settings;
    settings.journalSocket = path;
    LinuxHost host{settings};
    host.platform().log.write(LogLevel::error, "s", "c", "first");
    std::array<char, 512> buffer{};
    const ssize_t size = recv(journal, buffer.data(), buffer.size(), MSG_DONTWAIT);
    ASSERT_GT(size, 0);
    EXPECT_EQ(std::string(buffer.data(), static_cast<std::size_t>(size)),
              journalEntry(LogLevel::error, "s", "c", "first"));

    close(journal);
    std::filesystem::remove(path);
    ::testing::internal::CaptureStderr();
    log.write(LogLevel::error, "s", "c", "second");
    log.write(LogLevel::error, "s", "c", "second"); // each minute, maybe: it has been said
    JournalLog{std::string(200, '/')}.write(LogLevel::information, "s", "c", "third");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "pacelet [s:c] error: second\npacelet [s:c] third\n");
}

} // namespace
} // namespace pacelet::Linux
