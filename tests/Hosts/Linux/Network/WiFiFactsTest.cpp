#include "Hosts/Linux/Network/Nl80211.h"
#include "Hosts/Linux/Network/WirelessTable.h"

#include <gtest/gtest.h>
#include <linux/genetlink.h>
#include <linux/nl80211.h>

namespace pacelet::Linux {
namespace {

NetlinkRequest generic() {
    NetlinkRequest message{29, 0};
    message.record(genlmsghdr{});
    return message;
}

/// The bytes of attributes that go inside another one.
ByteBuffer inside(const NetlinkRequest& attributes) {
    const ByteBuffer bytes = attributes.bytes(0);
    return {bytes.begin() + sizeof(nlmsghdr), bytes.end()};
}

void put(ByteBuffer& answer, const NetlinkRequest& message) {
    const ByteBuffer bytes = message.bytes(1);
    answer.insert(answer.end(), bytes.begin(), bytes.end());
}

TEST(Nl80211, ReadsItsFamilyAndTheClientInterfaces) {
    EXPECT_EQ(
        parseFamilyNumber(generic().attribute(CTRL_ATTR_FAMILY_ID, std::uint16_t{29}).bytes(1)),
        29);
    EXPECT_EQ(parseFamilyNumber(generic().attribute(CTRL_ATTR_FAMILY_ID, std::uint8_t{1}).bytes(1)),
              std::nullopt);
    const auto interface = [](std::uint32_t index, std::uint32_t role) {
        NetlinkRequest message = generic();
        message.attribute(NL80211_ATTR_IFINDEX, index)
            .attribute(NL80211_ATTR_IFNAME, std::string{"wlan"} + std::to_string(index))
            .attribute(NL80211_ATTR_IFTYPE, role);
        return message;
    };
    ByteBuffer answer;
    put(answer, interface(2, NL80211_IFTYPE_AP));
    put(answer, interface(3, NL80211_IFTYPE_STATION)
                    .attribute(NL80211_ATTR_WIPHY_FREQ, std::uint32_t{5180}));
    put(answer, interface(4, NL80211_IFTYPE_STATION));
    put(answer, generic().attribute(NL80211_ATTR_IFTYPE, std::uint32_t{NL80211_IFTYPE_STATION}));
    EXPECT_EQ(parseWirelessInterfaces(answer),
              (std::vector<WirelessInterface>{{3, "wlan3", 5180}, {4, "wlan4", std::nullopt}}));
}

TEST(Nl80211, ReadsTheStation) {
    const auto station = [](std::optional<std::int8_t> signal, std::optional<std::uint16_t> narrow,
                            std::optional<std::uint32_t> wide) {
        NetlinkRequest rate{0, 0};
        if (narrow) {
            rate.attribute(NL80211_RATE_INFO_BITRATE, *narrow);
        }
        if (wide) {
            rate.attribute(NL80211_RATE_INFO_BITRATE32, *wide);
        }
        NetlinkRequest info{0, 0};
        if (signal) {
            info.attribute(NL80211_STA_INFO_SIGNAL, *signal);
        }
        info.attribute(NL80211_STA_INFO_TX_BITRATE, Bytes{inside(rate)});
        return parseStation(
            generic()
                .attribute(NL80211_ATTR_STA_INFO | NLA_F_NESTED, Bytes{inside(info)})
                .bytes(1));
    };
    EXPECT_EQ(station(std::int8_t{-67}, 8667, 8667), (Station{-67, 866.7}));
    EXPECT_EQ(station(std::int8_t{-128}, 540, std::nullopt), (Station{-128, 54.0}));
    EXPECT_EQ(station(std::nullopt, 0, 115294), (Station{std::nullopt, 11529.4}));
    EXPECT_EQ(station(std::int8_t{-1}, 0, std::nullopt), (Station{-1, std::nullopt}));
    EXPECT_EQ(parseStation({}), std::nullopt) << "not associated";
}

TEST(Nl80211, ReadsTheNoiseOfTheChannelInUse) {
    ByteBuffer answer;
    const auto survey = [&](std::int8_t noise, bool isInUse) {
        NetlinkRequest info{0, 0};
        info.attribute(NL80211_SURVEY_INFO_NOISE, noise);
        if (isInUse) {
            info.attribute(NL80211_SURVEY_INFO_IN_USE, Bytes{});
        }
        put(answer, generic().attribute(NL80211_ATTR_SURVEY_INFO, Bytes{inside(info)}));
    };
    survey(-100, false);
    EXPECT_EQ(parseNoise(answer), std::nullopt);
    survey(-95, true);
    survey(-90, false);
    EXPECT_EQ(parseNoise(answer), -95);
}

TEST(Nl80211, KnowsTheBandsByFrequency) {
    const std::vector<std::pair<std::uint32_t, int>> rows{
        {0, 0},    {2399, 0}, {2412, 1}, {2484, 1}, {3650, 0},       {4920, 2}, {5180, 2},
        {5885, 2}, {5955, 3}, {7115, 3}, {7126, 0}, {0xffffffff, 0}, {60480, 0}};
    for (const auto& [frequency, band] : rows) {
        EXPECT_EQ(bandOfFrequency(frequency), band) << frequency;
    }
}

TEST(WirelessTable, ReadsWhatIsInDecibels) {
    const std::string heading =
        "Inter-| sta-|   Quality        |   Discarded packets               | Missed | WE\n"
        " face | tus | link level noise |  nwid  crypt   frag  retry   misc | beacon | 22\n";
    EXPECT_TRUE(parseWirelessTable(heading).empty());
    EXPECT_EQ(parseWirelessTable(heading +
                                 " wlan0: 0000   70.  -40.  -256        0      0      0      0\n"
                                 "wlp2s0: 0000   54   -56   -89.\n"
                                 "  old0: 0000   54.  180.  161.        0\n"
                                 "  bad0: 0000   54.  -4x.  -90.        0\n"
                                 "short0: 0000   54.  -40.\n"
                                 "      : 0000   54.  -40.  -90.\n"
                                 "\n"
                                 "last0: 0000 1. -1. -255."),
              (std::vector<WirelessRow>{
                  {"wlan0", -40, 0}, {"wlp2s0", -56, -89}, {"old0", 0, 0}, {"last0", -1, -255}}));
}

} // namespace
} // namespace pacelet::Linux
