#include "Hosts/Linux/Network/Nl80211.h"

#include <linux/genetlink.h>
#include <linux/nl80211.h>

namespace pacelet::Linux {

namespace {

/// Calls `visit(int type, Bytes value)` for each attribute of each generic message.
template<typename Visitor>
void forEachGenericAttribute(Bytes payload, Visitor&& visit) {
    if (readRecord<genlmsghdr>(payload)) {
        forEachAttribute(behindHead(payload, sizeof(genlmsghdr)), visit);
    }
}

/// What `parse` makes of the first attribute of that type that it can read.
template<typename Value, typename Parse>
std::optional<Value> firstIn(Bytes answer, int wanted, Parse&& parse) {
    std::optional<Value> found;
    forEachMessage(answer, [&](const nlmsghdr&, Bytes payload) {
        forEachGenericAttribute(payload, [&](int type, Bytes value) {
            if (type == wanted && !found) {
                found = parse(value);
            }
        });
    });
    return found;
}

double megabitsPerSecond(std::uint32_t hundredKilobits) {
    return hundredKilobits / 10.0;
}

std::optional<double> parseBitrate(Bytes rate) {
    std::optional<double> narrow;
    std::optional<double> wide;
    forEachAttribute(rate, [&](int type, Bytes value) {
        // The older field has 16 bits and is 0 for rates that they do not hold.
        if (type == NL80211_RATE_INFO_BITRATE) {
            if (const auto units = readRecord<std::uint16_t>(value); units && *units != 0) {
                narrow = megabitsPerSecond(*units);
            }
        } else if (type == NL80211_RATE_INFO_BITRATE32) {
            if (const auto units = readRecord<std::uint32_t>(value)) {
                wide = megabitsPerSecond(*units);
            }
        }
    });
    return wide ? wide : narrow;
}

Station parseStationInfo(Bytes info) {
    Station station;
    forEachAttribute(info, [&](int type, Bytes value) {
        if (type == NL80211_STA_INFO_SIGNAL) {
            station.signalDBm = readRecord<std::int8_t>(value);
        } else if (type == NL80211_STA_INFO_TX_BITRATE) {
            station.transmitMbps = parseBitrate(value);
        }
    });
    return station;
}

/// The noise of one surveyed channel, if it is the one in use.
std::optional<int> parseSurveyedChannel(Bytes info) {
    std::optional<int> noise;
    bool isInUse = false;
    forEachAttribute(info, [&](int type, Bytes value) {
        if (type == NL80211_SURVEY_INFO_NOISE) {
            noise = readRecord<std::int8_t>(value);
        } else if (type == NL80211_SURVEY_INFO_IN_USE) {
            isInUse = true;
        }
    });
    return isInUse ? noise : std::nullopt;
}

} // namespace

std::optional<std::uint16_t> parseFamilyNumber(Bytes answer) {
    return firstIn<std::uint16_t>(answer, CTRL_ATTR_FAMILY_ID,
                                  [](Bytes value) { return readRecord<std::uint16_t>(value); });
}

std::vector<WirelessInterface> parseWirelessInterfaces(Bytes answer) {
    std::vector<WirelessInterface> interfaces;
    forEachMessage(answer, [&](const nlmsghdr&, Bytes payload) {
        WirelessInterface interface;
        std::optional<std::uint32_t> index;
        std::optional<std::uint32_t> role;
        forEachGenericAttribute(payload, [&](int type, Bytes value) {
            if (type == NL80211_ATTR_IFINDEX) {
                index = readRecord<std::uint32_t>(value);
            } else if (type == NL80211_ATTR_IFTYPE) {
                role = readRecord<std::uint32_t>(value);
            } else if (type == NL80211_ATTR_IFNAME) {
                interface.name = readText(value);
            } else if (type == NL80211_ATTR_WIPHY_FREQ) {
                interface.frequencyMHz = readRecord<std::uint32_t>(value);
            }
        });
        if (index && role == NL80211_IFTYPE_STATION) {
            interface.index = *index;
            interfaces.push_back(std::move(interface));
        }
    });
    return interfaces;
}

std::optional<Station> parseStation(Bytes answer) {
    return firstIn<Station>(answer, NL80211_ATTR_STA_INFO, parseStationInfo);
}

std::optional<int> parseNoise(Bytes answer) {
    return firstIn<int>(answer, NL80211_ATTR_SURVEY_INFO, parseSurveyedChannel);
}

int bandOfFrequency(std::uint32_t megahertz) {
    struct Band {
        int number;
        std::uint32_t lowest;
        std::uint32_t highest;
    };
    // The 6 GHz band begins where the last 5 GHz channel ends.
    for (const Band& band : {Band{1, 2400, 2500}, Band{2, 4900, 5924}, Band{3, 5925, 7125}}) {
        if (megahertz >= band.lowest && megahertz <= band.highest) {
            return band.number;
        }
    }
    return 0;
}

Nl80211::Nl80211()
    : socket_{NETLINK_GENERIC} {
    NetlinkRequest request{GENL_ID_CTRL, NLM_F_ACK};
    request.record(genlmsghdr{.cmd = CTRL_CMD_GETFAMILY, .version = 1})
        .attribute(CTRL_ATTR_FAMILY_NAME, std::string{NL80211_GENL_NAME});
    if (const auto answer = socket_.ask(request)) {
        family_ = parseFamilyNumber(*answer);
    }
}

std::vector<WirelessInterface> Nl80211::interfaces() {
    return parseWirelessInterfaces(dump(NL80211_CMD_GET_INTERFACE, std::nullopt));
}

std::optional<Station> Nl80211::station(std::uint32_t interfaceIndex) {
    return parseStation(dump(NL80211_CMD_GET_STATION, interfaceIndex));
}

std::optional<int> Nl80211::noise(std::uint32_t interfaceIndex) {
    return parseNoise(dump(NL80211_CMD_GET_SURVEY, interfaceIndex));
}

ByteBuffer Nl80211::dump(std::uint8_t command, std::optional<std::uint32_t> interfaceIndex) {
    if (!family_) {
        return {};
    }
    NetlinkRequest request{*family_, NLM_F_DUMP};
    request.record(genlmsghdr{.cmd = command});
    if (interfaceIndex) {
        request.attribute(NL80211_ATTR_IFINDEX, *interfaceIndex);
    }
    return socket_.ask(request).value_or(ByteBuffer{});
}

} // namespace pacelet::Linux
