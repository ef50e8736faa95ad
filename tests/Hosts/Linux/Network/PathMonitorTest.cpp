#include "Core/Internet/LinkReader.h"
#include "Hosts/Linux/Network/LinuxNetworkLink.h"
#include "Hosts/Linux/Network/PathReader.h"
#include "tests/Support/Eventually.h"
#include "tests/Support/NoThreads.h"

#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <gtest/gtest.h>
#include <mutex>
#include <sched.h>
#include <set>
#include <thread>

namespace pacelet::Linux {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 10s;
constexpr NetworkPath offline{};
constexpr NetworkPath wired{.satisfied = true, .usesWiredEthernet = true};

/// Updates as they come in, for another thread to wait for.
class Updates {
public:
    void add(const NetworkPath& path) {
        const std::lock_guard guard{lock_};
        paths_.push_back(path);
        changed_.notify_all();
    }

    /// The update of this number, from 0; nothing when it does not come.
    std::optional<NetworkPath> at(std::size_t number) {
        std::unique_lock guard{lock_};
        changed_.wait_for(guard, patience, [&] { return paths_.size() > number; });
        return paths_.size() > number ? std::optional{paths_[number]} : std::nullopt;
    }

    std::size_t count() {
        const std::lock_guard guard{lock_};
        return paths_.size();
    }

private:
    std::mutex lock_;
    std::condition_variable changed_;
    std::vector<NetworkPath> paths_;
};

std::size_t entriesOf(const char* folder) {
    const std::filesystem::directory_iterator entries{folder};
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

/// Whether descriptors and threads come down to what they were.
bool comesBackTo(std::size_t descriptors, std::size_t threads) {
    return testing::eventually([&] {
        return entriesOf("/proc/self/fd") <= descriptors && entriesOf("/proc/self/task") <= threads;
    });
}

TEST(RoutePathMonitor, ReportsAtOnceAndLeavesNothingBehind) {
    auto kept = std::make_unique<LinuxNetworkLink>("/sys");
    LinuxNetworkLink& network = *kept;
    std::set<std::thread::id> tellers;
    NetlinkSocket routing{NETLINK_ROUTE};
    const LinkType expected = LinkReader::typeOf(readPath(routing, "/sys"));
    std::thread{[] {}}.join(); // with the first one a sanitizer begins one of its own
    const std::size_t descriptors = entriesOf("/proc/self/fd");
    const std::size_t threads = entriesOf("/proc/self/task");
    for (int round = 0; round < 20; ++round) {
        // Cancelled and let go of within its own update.
        std::promise<LinkType> type;
        LinkReader::currentType(network, [&](LinkType found) {
            tellers.insert(std::this_thread::get_id());
            type.set_value(found);
        });
        auto answer = type.get_future();
        ASSERT_EQ(answer.wait_for(patience), std::future_status::ready);
        EXPECT_EQ(answer.get(), expected);

        // Destroyed by another thread, before or after its update; never started; cancelled first.
        Updates updates;
        const auto start = [&] {
            auto monitor = network.makePathMonitor();
            monitor->start("app.pacelet.path", [&](NetworkPath path) { updates.add(path); });
            return monitor;
        };
        start().reset();
        auto monitor = start();
        EXPECT_TRUE(updates.at(0));
        monitor->cancel();
        monitor->cancel();
        std::thread{[last = std::move(monitor)]() mutable { last.reset(); }}.join();
        network.makePathMonitor()->cancel();
    }
    EXPECT_EQ(tellers.size(), 1U) << "a reading costs no thread";
    kept.reset();
    EXPECT_TRUE(comesBackTo(descriptors, threads));
}

TEST(RoutePathMonitor, ReportsWithoutAThread) {
    const testing::NoThreads noThreads;
    LinuxNetworkLink network{"/sys"};
    Updates updates;
    const auto monitor = network.makePathMonitor();
    monitor->start("app.pacelet.path", [&](NetworkPath path) { updates.add(path); });
    EXPECT_EQ(updates.count(), 1U);
}

bool configure(const std::string& commands) {
    return std::system(("(set -e; " + commands + ") 2>/dev/null").c_str()) == 0;
}

/// In a network of its own, which nothing outside sees.
void followAPrivateNetwork() {
    if (::unshare(CLONE_NEWNET) != 0 || !configure("ip link set lo up")) {
        GTEST_SKIP() << "a network namespace takes privileges and the ip command";
    }
    LinuxNetworkLink network{"/sys"};
    Updates updates;
    const auto monitor = network.makePathMonitor();
    monitor->start("app.pacelet.path", [&](NetworkPath path) { updates.add(path); });
    EXPECT_EQ(updates.at(0), offline) << "a loopback interface leads nowhere";

    if (!configure("ip link add near type veth peer name far; ip link set near up;"
                   "ip link set far up; ip address add 192.0.2.1/24 dev near")) {
        GTEST_SKIP() << "this kernel has no virtual Ethernet pairs";
    }
    ASSERT_TRUE(configure("ip route add default via 192.0.2.2 dev near"));
    EXPECT_EQ(updates.at(1), wired);
    ASSERT_TRUE(configure("ip link set far down"));
    EXPECT_EQ(updates.at(2), offline) << "the cable is out";
    ASSERT_TRUE(configure("ip link set far up"));
    EXPECT_EQ(updates.at(3), wired);
    // More of the same is no change.
    ASSERT_TRUE(configure("ip address add 192.0.2.9/24 dev near; ip link set near mtu 1400"));
    ASSERT_TRUE(configure("ip route del default"));
    EXPECT_EQ(updates.at(4), offline);

    monitor->cancel();
    ASSERT_TRUE(configure("ip route add default via 192.0.2.2 dev near"));
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(updates.count(), 5U);
}

TEST(NetworkLink, HasAWiFiInterfaceOnlyWithTheHardware) {
    bool hasHardware = false;
    for (const auto& entry : std::filesystem::directory_iterator{"/sys/class/net"}) {
        hasHardware |= readDeviceSort("/sys", entry.path().filename()) == DeviceSort::wireless;
    }
    EXPECT_EQ(LinuxNetworkLink{"/sys"}.wifiInterface() != nullptr, hasHardware);
}

TEST(RoutePathMonitor, FollowsRoutesAndCables) {
    std::thread{followAPrivateNetwork}.join();
}

} // namespace
} // namespace pacelet::Linux
