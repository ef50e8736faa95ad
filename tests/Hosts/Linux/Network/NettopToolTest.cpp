#include "Hosts/Linux/Network/NettopTool.h"

#include "Core/Internet/NetTop.h"
#include "tests/Support/TemporaryFolder.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <linux/inet_diag.h>
#include <linux/sock_diag.h>
#include <linux/tcp.h>

namespace pacelet::Linux {
namespace {

/// One message of a socket dump, with the first `infoLength` bytes of its counters.
ByteBuffer socketMessage(const SocketCounters& counters, std::size_t infoLength) {
    inet_diag_msg head{};
    head.idiag_inode = static_cast<std::uint32_t>(counters.inode);
    head.idiag_family = AF_INET;
    head.id.idiag_dst[0] = 1;
    head.id.idiag_cookie[0] = static_cast<std::uint32_t>(counters.cookie);
    head.id.idiag_cookie[1] = static_cast<std::uint32_t>(counters.cookie >> 32);
    tcp_info info{};
    info.tcpi_bytes_received = counters.bytesReceived;
    info.tcpi_bytes_sent = counters.bytesSent;
    NetlinkRequest message{SOCK_DIAG_BY_FAMILY, 0};
    message.record(head).attribute(INET_DIAG_SHUTDOWN, std::uint8_t{0});
    message.attribute(INET_DIAG_INFO, std::as_bytes(std::span{&info, 1}).first(infoLength));
    return message.bytes(1);
}

TEST(SocketDiag, ReadsCountersAndLeavesOutWhatIsNotTold) {
    constexpr std::size_t whole = sizeof(tcp_info);
    constexpr std::size_t shortOne = offsetof(tcp_info, tcpi_bytes_sent) + 7;
    const SocketCounters large{0xfedcba9876543210, 0xffffffff, UINT64_MAX, 1ULL << 40};
    ByteBuffer answer;
    for (const ByteBuffer& message :
         {socketMessage(large, whole), socketMessage({1, 0, 5, 5}, whole),
          socketMessage({2, 22, 5, 5}, shortOne), socketMessage({3, 33, 5, 6}, shortOne + 1)}) {
        answer.insert(answer.end(), message.begin(), message.end());
    }
    std::vector<SocketCounters> sockets;
    parseSocketCounters(answer, {}, sockets);
    EXPECT_EQ(sockets, (std::vector<SocketCounters>{large, {3, 33, 5, 6}}));
}

SocketSample sampleAt(double seconds, std::vector<SocketCounters> sockets) {
    return {MonotonicTime{Seconds{seconds}}, std::move(sockets)};
}

TEST(SocketTraffic, RatesAreDifferencesASecond) {
    const SocketSample before =
        sampleAt(10, {{1, 101, 1000, 500}, {2, 102, 700, 700}, {3, 103, 9, 9}, {5, 105, 4, 4}});
    const SocketSample after =
        sampleAt(12, {{4, 104, 30, 10}, {1, 101, 3000, 500}, {2, 102, 600, 800}, {6, 105, 8, 8}});
    // A new one counts from 0, one that runs backwards does not count, one that closed is lost, and
    // a reused inode is another socket.
    EXPECT_EQ(
        trafficRates(before, after),
        (std::vector<SocketTraffic>{{104, 15, 5}, {101, 1000, 0}, {102, 0, 50}, {105, 4, 4}}));
    EXPECT_TRUE(trafficRates(after, before).empty()) << "time ran backwards";
    EXPECT_TRUE(trafficRates(before, before).empty()) << "no time at all";
}

TEST(SocketDiag, LeavesOutWhatStaysOnTheMachine) {
    const std::tuple<int, const char*, const char*, bool> cases[] = {
        {AF_INET, "192.0.2.1", "198.51.100.7", true},
        {AF_INET, "192.0.2.1", "192.0.2.1", false},
        {AF_INET, "127.0.0.1", "127.0.0.53", false},
        {AF_INET6, "::1", "::1", false},
        {AF_INET6, "2001:db8::1", "7f00::1", true},
        {AF_INET6, "fe80::1", "fe80::2", true},
        {AF_INET6, "::ffff:127.0.0.1", "::ffff:127.0.0.1", false},
        {AF_INET6, "::ffff:192.0.2.1", "::ffff:198.51.100.7", true},
        {AF_INET, "172.17.0.1", "172.17.255.9", false},
        {AF_INET6, "::ffff:172.17.0.1", "::ffff:172.17.0.2", false},
        {AF_INET, "172.17.0.1", "172.18.0.2", true},
        {AF_INET6, "2001:db8::1", "ac11:2::1", true}};
    LocalNetworks containers;
    in6_addr address{};
    in6_addr mask{};
    ::inet_pton(AF_INET6, "::ffff:172.17.0.1", &address);
    ::inet_pton(AF_INET6, "ffff:ffff:ffff:ffff:ffff:ffff:ffff:0", &mask);
    containers.add(address, mask);
    for (const auto& [family, source, peer, isListed] : cases) {
        ByteBuffer message = socketMessage({1, 11, 5, 5}, sizeof(tcp_info));
        auto* const head = reinterpret_cast<inet_diag_msg*>(message.data() + sizeof(nlmsghdr));
        head->idiag_family = static_cast<std::uint8_t>(family);
        ::inet_pton(family, source, head->id.idiag_src);
        ::inet_pton(family, peer, head->id.idiag_dst);
        std::vector<SocketCounters> sockets;
        parseSocketCounters(message, containers, sockets);
        EXPECT_EQ(sockets.size(), isListed ? 1U : 0U) << source << ' ' << peer;
    }
}

TEST(LinkCounters, AddUpDevicesAndWithoutAnyTheRest) {
    const auto line = [](const std::string& name, int bytes) {
        return "  " + name + ": " + std::to_string(bytes) + " 2 0 0 0 0 0 0 " +
               std::to_string(bytes + 1) + " 4 0 0 0 0 0 0\n";
    };
    const std::string text = "Inter-| Receive\n face |bytes\n" + line("lo", 900) +
                             line("eth0", 10) + line("wlan0", 20) + line("tun0", 50) +
                             line("docker0", 7000) + line("vethab12", 7000) + "odd: 1 2\n";
    const testing::TemporaryFolder sys;
    const auto sum = [&] {
        return parseLinkCounters(
            text, [&](const std::string& name) { return interfaceKind(sys.path(), name); });
    };
    EXPECT_EQ(sum(), (LinkCounters{7080, 8, 7084, 16})) << "nothing tells that it is a bridge";
    sys.write("class/net/docker0/bridge/forward_delay", "0");
    sys.write("class/net/docker0/brif/vethab12/state", "3");
    EXPECT_EQ(sum(), (LinkCounters{80, 6, 83, 12}));
    sys.write("class/net/eth0/device/vendor", "0x8086");
    sys.write("class/net/wlan0/device/vendor", "0x8086");
    EXPECT_EQ(sum(), (LinkCounters{30, 4, 32, 8}));
    sys.write("class/net/docker0/brif/bond0/state", "3");
    EXPECT_EQ(interfaceKind(sys.path(), "docker0"), InterfaceKind::other) << "the way out";
}

TEST(SocketOwners, GoThroughTheDescriptorsThatMayBeSeen) {
    EXPECT_EQ(socketInode("socket:[4711]"), 4711U);
    for (const auto* odd : {"socket:[]", "socket:[-1]", "socket:[4711", "pipe:[4711]",
                            "socket:", "/tmp/socket:[1]", "socket:[99999999999999999999]", ""}) {
        EXPECT_EQ(socketInode(odd), std::nullopt) << odd;
    }
    EXPECT_EQ(trafficName("Web Content\n"), "Web Content");
    EXPECT_EQ(trafficName("a,b\nc.d,\n"), "a?b?c.d?");
    EXPECT_EQ(trafficName(""), "");

    const testing::TemporaryFolder proc;
    proc.write("self/comm", "self\n");
    proc.write("10/comm", "parent\n");
    proc.link("10/fd/0", "/dev/null");
    proc.link("10/fd/3", "socket:[100]");
    proc.link("10/fd/4", "socket:[101]");
    proc.write("9/comm", "elder\n");
    proc.link("9/fd/7", "socket:[100]");
    proc.link("11/fd/3", "socket:[102]"); // gone before its name was read
    proc.write("12/comm", "hidden\n");
    const SocketOwners owners = readSocketOwners(proc.path());
    EXPECT_EQ(owners.pidOf(100), 10) << "the highest of several";
    EXPECT_EQ(owners.pidOf(101), 10);
    EXPECT_EQ(owners.pidOf(102), 11);
    EXPECT_EQ(owners.pidOf(103), std::nullopt);
    EXPECT_EQ(owners.nameOf(10), "parent");
    EXPECT_EQ(owners.nameOf(11), "");
    EXPECT_EQ(readSocketOwners("/nowhere/at/all").pidOf(100), std::nullopt);
}

/// Two samples one and a half seconds apart, and how long was slept between them.
struct FakeMachine {
    std::vector<std::optional<SocketSample>> samples;
    Seconds slept{0};
    std::size_t taken = 0;

    NettopTool::Machine machine() {
        return {[this] { return samples.at(taken++); },
                [] {
                    SocketOwners owners;
                    owners.add(101, 7);
                    owners.add(102, 7);
                    owners.add(103, 5);
                    owners.setName(7, "two.sockets");
                    owners.setName(5, "idle");
                    return owners;
                },
                [this](Seconds period) { slept += period; }};
    }
};

TEST(NettopTool, PrintsTotalsAndThenRatesPerProcess) {
    FakeMachine fake{
        {sampleAt(1, {{1, 101, 1000, 0}, {3, 103, 50, 50}, {9, 999, 8, 8}}),
         sampleAt(2.5,
                  {{1, 101, 4000, 10}, {2, 102, 0, 5}, {3, 103, 50, 50}, {9, 999, 800, 800}})}};
    const Shell::Output output = NettopTool::answer(NetTop::arguments(), fake.machine());
    EXPECT_EQ(output, (Shell::Output{0,
                                     ",bytes_in,bytes_out,\n"
                                     "idle.5,50,50,\n"
                                     "two.sockets.7,1000,0,\n"
                                     ",bytes_in,bytes_out,\n"
                                     "idle.5,0,0,\n"
                                     "two.sockets.7,2000,10,\n",
                                     ""}));
    EXPECT_EQ(fake.slept, Seconds{1.0});
    EXPECT_EQ(NetTop::parse(output.stdout), (std::vector<NetUsage>{{7, "two.sockets", 2000, 10}}));
}

TEST(NettopTool, TellsInOneLineWhatElseGoesOverTheNetwork) {
    const auto listed = [](std::int64_t bytesIn, std::int64_t packetsIn, std::int64_t unowned) {
        const auto count = [](std::int64_t figure) { return static_cast<std::uint64_t>(figure); };
        FakeMachine fake{{sampleAt(1, {{1, 101, 0, 0}, {9, 999, 0, 0}}),
                          sampleAt(2, {{1, 101, 1'000'000, 0}, {9, 999, 0, count(unowned)}})}};
        fake.samples[1]->links = {count(bytesIn), count(packetsIn), 0, 0};
        std::vector<NetUsage> usage = NetTop::parse(*NettopTool::text(fake.machine()));
        std::erase_if(usage, [](const NetUsage& each) { return each.pid != 0; });
        return usage;
    };
    const std::string name = "Other traffic (UDP and other users)";
    EXPECT_TRUE(listed(1'070'000, 1'000, 0).empty()) << "headers";
    EXPECT_TRUE(listed(0, 0, 0).empty()) << "no device tells";
    EXPECT_EQ(listed(3'066'000, 1'000, 0), (std::vector<NetUsage>{{0, name, 2e6, 0}}));
    EXPECT_EQ(listed(0, 0, 50'000), (std::vector<NetUsage>{{0, name, 0, 5e4}}));
}

TEST(NettopTool, TellsWhatItCannotDo) {
    for (const std::size_t failing : {0U, 1U}) {
        FakeMachine fake{{sampleAt(1, {}), sampleAt(2, {})}};
        fake.samples[failing] = std::nullopt;
        const Shell::Output output = NettopTool::answer(NetTop::arguments(), fake.machine());
        EXPECT_EQ(output.status, 1);
        EXPECT_EQ(output.stdout, "");
        EXPECT_NE(output.stderr, "");
    }
    FakeMachine untouched;
    EXPECT_EQ(NettopTool::answer({"-P", "-L", "0"}, untouched.machine()).status, 64);
}

} // namespace
} // namespace pacelet::Linux
