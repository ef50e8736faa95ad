#include "Hosts/Linux/Network/NetlinkMessage.h"

#include "Hosts/Linux/Network/NetlinkSocket.h"

#include <gtest/gtest.h>
#include <linux/rtnetlink.h>
#include <rapidcheck.h>
#include <unistd.h>

namespace pacelet::Linux {
namespace {

using Attribute = std::pair<int, std::string>;

std::vector<Attribute> attributesOf(Bytes bytes) {
    std::vector<Attribute> list;
    forEachAttribute(bytes, [&](int type, Bytes value) {
        list.emplace_back(type,
                          std::string{reinterpret_cast<const char*>(value.data()), value.size()});
    });
    return list;
}

TEST(NetlinkMessage, WhatIsWrittenReadsBackAndACutTailIsLeftOut) {
    EXPECT_TRUE(rc::check([] {
        const auto texts =
            *rc::gen::container<std::vector<std::string>>(rc::gen::string<std::string>());
        NetlinkRequest request{RTM_GETLINK, NLM_F_DUMP};
        request.record(ifinfomsg{.ifi_index = 7});
        std::vector<Attribute> written;
        for (const std::string& text : texts) {
            const auto type = static_cast<std::uint16_t>(written.size() % 9);
            request.attribute(type, std::as_bytes(std::span{text}));
            written.emplace_back(type, text);
        }
        ByteBuffer bytes = request.bytes(1);
        const ByteBuffer second = request.bytes(2);
        bytes.insert(bytes.end(), second.begin(), second.end());

        // Cut at any place, only whole messages are seen, and each in full.
        const auto kept = *rc::gen::inRange<std::size_t>(0, bytes.size() + 1);
        std::uint32_t seen = 0;
        forEachMessage(Bytes{bytes}.first(kept), [&](const nlmsghdr& header, Bytes payload) {
            RC_ASSERT(header.nlmsg_seq == ++seen);
            RC_ASSERT(header.nlmsg_type == RTM_GETLINK);
            RC_ASSERT(readRecord<ifinfomsg>(payload)->ifi_index == 7);
            RC_ASSERT(attributesOf(behindHead(payload, sizeof(ifinfomsg))) == written);
        });
        RC_ASSERT(seen == kept / second.size());
        // Attributes cut short: a prefix of the list.
        const Bytes body = behindHead(Bytes{second}.subspan(sizeof(nlmsghdr)), sizeof(ifinfomsg));
        const auto some =
            attributesOf(body.first(*rc::gen::inRange<std::size_t>(0, body.size() + 1)));
        RC_ASSERT(some.size() <= written.size());
        RC_ASSERT(std::equal(some.begin(), some.end(), written.begin()));
    }));
}

TEST(NetlinkMessage, LyingLengthsEndTheReading) {
    for (const std::uint32_t length : {0U, 1U, 15U, 17U, 0x7fffffffU, 0xffffffffU}) {
        const nlmsghdr header{.nlmsg_len = length};
        int seen = 0;
        forEachMessage(std::as_bytes(std::span{&header, 1}), [&](auto&, Bytes) { ++seen; });
        EXPECT_EQ(seen, 0) << length;
    }
    const nlattr zero{};
    EXPECT_TRUE(attributesOf(std::as_bytes(std::span{&zero, 1})).empty());
    EXPECT_EQ(readRecord<std::uint64_t>(Bytes{}, 1), std::nullopt);
    EXPECT_EQ(readText(std::as_bytes(std::span{"lo\0rest", 7})), "lo");
    EXPECT_EQ(readText(std::as_bytes(std::span{"lo", 2})), "lo");
}

TEST(NetlinkSocket, AsksTheKernelAndTakesARefusal) {
    NetlinkSocket routing{NETLINK_ROUTE};
    NetlinkRequest interfaces{RTM_GETLINK, NLM_F_DUMP};
    interfaces.record(ifinfomsg{});
    for (int round = 0; round < 2; ++round) {
        const auto answer = routing.ask(interfaces);
        ASSERT_TRUE(answer);
        int links = 0;
        forEachMessage(*answer, [&](const nlmsghdr& header, Bytes) {
            links += header.nlmsg_type == RTM_NEWLINK ? 1 : 0;
        });
        EXPECT_GE(links, 1);
    }
    NetlinkRequest unknown{RTM_MAX + 100, NLM_F_ACK};
    EXPECT_EQ(routing.ask(unknown.record(ifinfomsg{})), std::nullopt);
    EXPECT_TRUE(routing.ask(interfaces)) << "a refusal does not spoil the next answer";

    NetlinkSocket closed{-1};
    EXPECT_LT(closed.descriptor(), 0);
    EXPECT_EQ(closed.ask(interfaces), std::nullopt);
    closed.discardPending();
}

} // namespace
} // namespace pacelet::Linux
