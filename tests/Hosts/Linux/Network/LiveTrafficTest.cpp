#include "Core/Internet/NetTop.h"
#include "Hosts/Linux/LinuxHost.h"
#include "Hosts/Linux/Network/SocketDiag.h"

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cmath>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace pacelet::Linux {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::size_t pieceBytes = 200'000;
constexpr auto pieceEvery = std::chrono::milliseconds{10};
constexpr int mostPieces = 600; ///< six seconds

int listenOnLoopback(sockaddr_in& address) {
    address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    socklen_t size = sizeof address;
    EXPECT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(::listen(listener, 1), 0);
    EXPECT_EQ(::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size), 0);
    return listener;
}

/// What the child does: 20 MB a second over loopback, for a few seconds at most.
[[noreturn]] void sendSteadily(const sockaddr_in& address) {
    ::prctl(PR_SET_NAME, "steady.sender,1");
    static const std::vector<char> piece(pieceBytes, 'x');
    const int connection = ::socket(AF_INET, SOCK_STREAM, 0);
    bool isSending =
        ::connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    auto next = SteadyClock::now();
    for (int sent = 0; isSending && sent < mostPieces; ++sent) {
        for (std::size_t done = 0; isSending && done < piece.size();) {
            const ssize_t count =
                ::send(connection, piece.data() + done, piece.size() - done, MSG_NOSIGNAL);
            isSending = count > 0;
            done += isSending ? static_cast<std::size_t>(count) : 0;
        }
        std::this_thread::sleep_until(next += pieceEvery);
    }
    ::_exit(0);
}

/// Takes what comes until the other end closes.
void receive(int connection, std::atomic<std::int64_t>& received) {
    std::vector<char> room(1 << 16);
    for (ssize_t count = 1; count > 0;) {
        count = ::recv(connection, room.data(), room.size(), 0);
        received += std::max<ssize_t>(count, 0);
    }
    ::close(connection);
}

/// What one listing said while so much really arrived.
struct Comparison {
    double trueRate = 0;
    NetUsage out{};
    NetUsage in{};

    bool agrees() const {
        const double tolerance = trueRate / 5;
        return std::abs(out.bytesOutPerSec - trueRate) <= tolerance &&
               std::abs(in.bytesInPerSec - trueRate) <= tolerance;
    }
};

NetUsage usageOf(const std::vector<NetUsage>& usage, std::int32_t pid) {
    const auto place = std::ranges::find(usage, pid, &NetUsage::pid);
    return place == usage.end() ? NetUsage{} : *place;
}

Comparison compare(LinuxHost& host, std::int32_t sender,
                   const std::atomic<std::int64_t>& received) {
    const std::int64_t before = received;
    const auto begin = SteadyClock::now();
    const std::vector<NetUsage> usage = NetTop::sample(host.tools());
    const double seconds = std::chrono::duration<double>(SteadyClock::now() - begin).count();
    return {static_cast<double>(received - before) / seconds, usageOf(usage, sender),
            usageOf(usage, ::getpid())};
}

TEST(LiveTraffic, NettopNamesBothEndsOfATransferWithItsRate) {
    NetlinkSocket diagnostics{NETLINK_SOCK_DIAG};
    if (!readSocketCounters(diagnostics)) {
        GTEST_SKIP() << "this kernel does not answer questions about its sockets";
    }
    sockaddr_in address{};
    const int listener = listenOnLoopback(address);
    const pid_t sender = ::fork();
    if (sender == 0) {
        ::close(listener);
        sendSteadily(address);
    }
    const int connection = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    ::close(listener);
    ASSERT_GE(connection, 0);
    std::atomic<std::int64_t> received{0};
    std::thread receiver{[&] { receive(connection, received); }};
    std::this_thread::sleep_for(std::chrono::milliseconds{200});

    LinuxHost host;
    Comparison seen = compare(host, sender, received);
    // A busy machine may stall the transfer at the edges of a sample, which the clock here does not
    // share.
    for (int attempt = 1; attempt < 3 && !seen.agrees(); ++attempt) {
        seen = compare(host, sender, received);
    }
    ::kill(sender, SIGKILL);
    ::waitpid(sender, nullptr, 0);
    receiver.join();

    EXPECT_GT(seen.trueRate, 1e6);
    EXPECT_EQ(seen.out.name, "steady.sender?1");
    EXPECT_EQ(seen.out.bytesInPerSec, 0);
    EXPECT_TRUE(seen.agrees()) << "truly " << seen.trueRate << ", sent " << seen.out.bytesOutPerSec
                               << ", received " << seen.in.bytesInPerSec;
    RecordProperty("true_rate", std::to_string(seen.trueRate));
    RecordProperty("rate_seen", std::to_string(seen.in.bytesInPerSec));
}

} // namespace
} // namespace pacelet::Linux
