#include "benchmarks/truth/TrafficTruth.h"

#include "Core/Internet/NetTop.h"
#include "Core/Support/Descriptor.h"
#include "benchmarks/truth/Line.h"

#include <algorithm>
#include <arpa/inet.h>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <fmt/format.h>
#include <sched.h>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <vector>

namespace pacelet::truth {

namespace {

constexpr const char* serverAddress = "198.51.100.2";
constexpr double tolerance = 0.05;
/// Of a full packet's 1514 bytes on the wire so many are what the programs send each other.
constexpr double payloadShare = 1448.0 / 1514.0;
constexpr double downMbps = 40;
constexpr double upMbps = 12;

double payloadBytesPerSecond(double mbps) {
    return mbps * 1e6 / 8 * payloadShare;
}

/// A process that lives as long as this.
class Child {
public:
    template<typename Work>
    Child(const char* name, Work work)
        : pid_{::fork()} {
        if (pid_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::prctl(PR_SET_NAME, name);
            work();
            ::_exit(0);
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }

    pid_t pid() const { return pid_; }

private:
    pid_t pid_;
};

void sendWithoutEnd(int connection) {
    const std::vector<char> piece(1 << 16, 'x');
    while (::send(connection, piece.data(), piece.size(), MSG_NOSIGNAL) > 0) {
    }
}

void receiveToTheEnd(int connection) {
    std::vector<char> room(1 << 16);
    while (::recv(connection, room.data(), room.size(), 0) > 0) {
    }
}

sockaddr_in addressOf(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    ::inet_pton(AF_INET, serverAddress, &address.sin_addr);
    return address;
}

template<typename Work>
void serve(std::uint16_t port, Work work) {
    const Descriptor space{::open("/run/netns/server", O_RDONLY | O_CLOEXEC)};
    ::setns(space.get(), CLONE_NEWNET);
    const sockaddr_in address = addressOf(port);
    const Descriptor listener{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    const auto* name = reinterpret_cast<const sockaddr*>(&address);
    if (::bind(listener.get(), name, sizeof address) == 0 && ::listen(listener.get(), 1) == 0) {
        work(::accept(listener.get(), nullptr, nullptr));
    }
}

template<typename Work>
void ask(std::uint16_t port, Work work) {
    const sockaddr_in address = addressOf(port);
    for (int attempt = 0; attempt < 50; ++attempt) {
        const Descriptor connection{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
        const auto* name = reinterpret_cast<const sockaddr*>(&address);
        if (::connect(connection.get(), name, sizeof address) == 0) {
            work(connection.get());
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds{100});
    }
}

NetUsage usageOf(const std::vector<NetUsage>& usage, pid_t pid) {
    const auto place = std::ranges::find(usage, pid, &NetUsage::pid);
    return place == usage.end() ? NetUsage{} : *place;
}

bool report(const char* what, double said, double truth) {
    const bool good = std::abs(said - truth) <= truth * tolerance;
    fmt::print("| {} | {:.3f} | {:.3f} | {:+.1f}% |{}\n", what, truth / 1e6, said / 1e6,
               (said / truth - 1) * 100, good ? "" : " not true");
    return good;
}

bool lookIsTrue(Linux::LinuxHost& host, pid_t loading, pid_t sending) {
    const std::vector<NetUsage> usage = NetTop::sample(host.tools());
    const bool first =
        report("one program loads at 40 Mbit/s", usageOf(usage, loading).bytesInPerSec,
               payloadBytesPerSecond(downMbps));
    const bool second =
        report("another sends at 12 Mbit/s meanwhile", usageOf(usage, sending).bytesOutPerSec,
               payloadBytesPerSecond(upMbps));
    return first && second;
}

} // namespace

bool trafficIsTrue(Linux::LinuxHost& host) {
    constexpr std::uint16_t givingPort = 9001;
    constexpr std::uint16_t takingPort = 9002;
    constexpr int mostLooks = 4;
    const Line line{{downMbps, 10, false}};
    // Queues that never run empty make a steady rate.
    onTheLine(fmt::format("tc qdisc replace dev c1 root tbf rate {}mbit burst 50000 limit 600000",
                          downMbps));
    onTheLine(fmt::format("tc qdisc replace dev s1 root tbf rate {}mbit burst 15000 limit 200000",
                          upMbps));
    const Child giver{"giver", [] { serve(givingPort, sendWithoutEnd); }};
    const Child taker{"taker", [] { serve(takingPort, receiveToTheEnd); }};
    const Child loader{"loader", [] { ask(givingPort, receiveToTheEnd); }};
    const Child sender{"sender", [] { ask(takingPort, sendWithoutEnd); }};
    std::this_thread::sleep_for(std::chrono::seconds{5});
    fmt::print("\n| Traffic | True, MB/s | Said | |\n|---|---|---|---|\n");
    for (int look = 0; look < mostLooks; ++look) {
        if (lookIsTrue(host, loader.pid(), sender.pid())) {
            return true;
        }
    }
    return false;
}

} // namespace pacelet::truth
