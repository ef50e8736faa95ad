#include "Core/Internet/NetTop.h"
#include "Hosts/Linux/LinuxHost.h"
#include "Hosts/Linux/Network/SocketDiag.h"
#include "tests/Support/Eventually.h"

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace pacelet::Linux {
namespace {

using SteadyClock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr const char* here = "192.0.2.1";
constexpr const char* there = "192.0.2.2";

bool succeeds(const std::string& commands) {
    return std::system(("(set -e; " + commands + ") 2>/dev/null").c_str()) == 0;
}

sockaddr_in addressOf(const char* host, int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    ::inet_pton(AF_INET, host, &address.sin_addr);
    return address;
}

/// Sends back whatever comes over the first connection to this address.
[[noreturn]] void echo(const sockaddr_in& address) {
    const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
    if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener, 1) != 0) {
        ::_exit(1);
    }
    const int connection = ::accept(listener, nullptr, nullptr);
    std::vector<char> room(1 << 16);
    for (ssize_t count = 1; count > 0;) {
        count = ::recv(connection, room.data(), room.size(), 0);
        count = count > 0
                    ? ::send(connection, room.data(), static_cast<std::size_t>(count), MSG_NOSIGNAL)
                    : 0;
    }
    ::_exit(0);
}

int connectTo(const sockaddr_in& address) {
    const int connection = ::socket(AF_INET, SOCK_STREAM, 0);
    for (int attempt = 0; attempt < 500; ++attempt) {
        if (::connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) ==
            0) {
            break;
        }
        std::this_thread::sleep_for(10ms);
    }
    return connection;
}

/// Sends a piece every ten milliseconds and takes it back; counts what has gone there and back.
[[noreturn]] void talk(const sockaddr_in& address, std::size_t pieceBytes,
                       std::atomic<std::int64_t>& moved) {
    ::prctl(PR_SET_NAME, "steady.sender,1");
    const int connection = connectTo(address);
    std::vector<char> piece(pieceBytes, 'x');
    bool isTalking = true;
    for (auto next = SteadyClock::now(); isTalking; std::this_thread::sleep_until(next += 10ms)) {
        for (std::size_t at = 0; isTalking && at < piece.size();) {
            // Little enough that neither end waits for the other to read.
            const std::size_t part = std::min<std::size_t>(piece.size() - at, 10'000);
            isTalking =
                ::send(connection, piece.data(), part, MSG_NOSIGNAL) ==
                    static_cast<ssize_t>(part) &&
                ::recv(connection, piece.data(), part, MSG_WAITALL) == static_cast<ssize_t>(part);
            at += part;
            moved += static_cast<std::int64_t>(part);
        }
    }
    ::_exit(0);
}

/// About 2 MB of datagrams a second.
[[noreturn]] void shout(const sockaddr_in& address) {
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    const std::vector<char> datagram(1'000, 'x');
    for (auto next = SteadyClock::now();; std::this_thread::sleep_until(next += 10ms)) {
        for (int count = 0; count < 20; ++count) {
            ::sendto(socket, datagram.data(), datagram.size(), 0,
                     reinterpret_cast<const sockaddr*>(&address), sizeof address);
        }
    }
}

/// Children that end with this object, and at the latest with us.
class Children {
public:
    template<typename Work>
    pid_t start(Work&& work) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            work();
            ::_exit(0);
        }
        pids_.push_back(child);
        return child;
    }
    ~Children() {
        for (const pid_t pid : pids_) {
            ::kill(pid, SIGKILL);
            ::waitpid(pid, nullptr, 0);
        }
    }

private:
    std::vector<pid_t> pids_;
};

NetUsage usageOf(const std::vector<NetUsage>& usage, std::int32_t pid) {
    const auto place = std::ranges::find(usage, pid, &NetUsage::pid);
    return place == usage.end() ? NetUsage{} : *place;
}

/// Two machines of our own with a cable between them. On this one, a program talks to the other
/// over TCP, one shouts datagrams, and two talk to each other without ever leaving the machine.
void watchAPrivateNetwork() {
    Children children;
    const bool isAlone = ::unshare(CLONE_NEWNET) == 0;
    const pid_t farEnd = children.start([] {
        if (::unshare(CLONE_NEWNET) == 0) {
            while (!succeeds(std::string{"ip address add "} + there + "/24 dev far")) {
                std::this_thread::sleep_for(10ms);
            }
            succeeds("ip link set far up");
            echo(addressOf(there, 4'000));
        }
    });
    const std::string commands = "ip link set lo up; ip link add near type veth peer name far;"
                                 "ip link set near up; ip address add " +
                                 std::string{here} + "/24 dev near";
    if (!isAlone || !succeeds(commands)) {
        GTEST_SKIP() << "a network namespace takes privileges and the ip command";
    }
    const auto networkOf = [](const std::string& process) {
        return std::filesystem::read_symlink("/proc/" + process + "/ns/net");
    };
    ASSERT_TRUE(testing::eventually(
        [&] { return networkOf(std::to_string(farEnd)) != networkOf("thread-self"); }));
    ASSERT_TRUE(succeeds("ip link set far netns " + std::to_string(farEnd)));

    void* const shared =
        ::mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto& moved = *new (shared) std::atomic<std::int64_t>{0};
    std::atomic<std::int64_t> unused{0};
    const pid_t talker = children.start([&] { talk(addressOf(there, 4'000), 100'000, moved); });
    children.start([] { shout(addressOf(there, 4'001)); });
    const pid_t echoer = children.start([] { echo(addressOf(here, 4'000)); });
    const pid_t neighbour = children.start([&] { talk(addressOf(here, 4'000), 300'000, unused); });
    ASSERT_TRUE(testing::eventually([&] { return moved > 0; }));

    LinuxHost host;
    double trueRate = 0;
    std::vector<NetUsage> usage;
    // A busy machine may stall the transfer at the edges of a sample, which the clock here does not
    // share.
    const auto agrees = [&] {
        const std::int64_t before = moved;
        const auto begin = SteadyClock::now();
        usage = NetTop::sample(host.tools());
        trueRate = static_cast<double>(moved - before) /
                   std::chrono::duration<double>(SteadyClock::now() - begin).count();
        const NetUsage seen = usageOf(usage, talker);
        return std::abs(seen.bytesOutPerSec - trueRate) <= trueRate / 5 &&
               std::abs(seen.bytesInPerSec - trueRate) <= trueRate / 5;
    };
    EXPECT_TRUE(agrees() || agrees() || agrees())
        << "truly " << trueRate << ", seen " << usageOf(usage, talker).bytesOutPerSec;
    EXPECT_GT(trueRate, 1e6);
    EXPECT_EQ(usageOf(usage, talker).name, "steady.sender?1");
    EXPECT_EQ(usageOf(usage, neighbour).total() + usageOf(usage, echoer).total(), 0);
    const NetUsage other = usageOf(usage, 0);
    EXPECT_NEAR(other.bytesOutPerSec, 2e6, 1e6) << "datagrams";
    EXPECT_LT(other.bytesInPerSec, trueRate / 5);
    ::munmap(shared, 4096);
}

TEST(LiveTraffic, NettopNamesWhoUsesTheNetworkAndHowMuch) {
    NetlinkSocket diagnostics{NETLINK_SOCK_DIAG};
    if (!readSocketCounters(diagnostics, {})) {
        GTEST_SKIP() << "this kernel does not answer questions about its sockets";
    }
    std::thread{watchAPrivateNetwork}.join();
}

} // namespace
} // namespace pacelet::Linux
