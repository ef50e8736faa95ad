#pragma once

#include "Hosts/Linux/Network/NetlinkSocket.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// A wireless interface in the role of a client.
struct WirelessInterface {
    std::uint32_t index = 0;
    std::string name;
    std::optional<std::uint32_t> frequencyMHz{}; ///< absent without a channel

    bool operator==(const WirelessInterface&) const = default;
};

/// The access point as the radio hears it.
struct Station {
    std::optional<int> signalDBm;
    std::optional<double> transmitMbps;

    bool operator==(const Station&) const = default;
};

/// The number under which the kernel runs a generic netlink service, out of its answer.
std::optional<std::uint16_t> parseFamilyNumber(Bytes answer);

/// Reads the answer to a dump of wireless interfaces; other roles than a client's are left out.
std::vector<WirelessInterface> parseWirelessInterfaces(Bytes answer);

/// Reads the answer to a dump of stations: the first one, which is a client's only one. Nothing
/// while not associated.
std::optional<Station> parseStation(Bytes answer);

/// The noise in dBm on the channel in use, out of the answer to a dump of the survey.
std::optional<int> parseNoise(Bytes answer);

/// 1 for 2.4 GHz, 2 for 5 GHz, 3 for 6 GHz, 0 for any other frequency.
int bandOfFrequency(std::uint32_t megahertz);

/// Asks the kernel's wireless configuration service. One thread at a time.
class Nl80211 {
public:
    Nl80211();

    /// False when no wireless driver has brought the service in.
    bool isThere() const { return family_.has_value(); }

    std::vector<WirelessInterface> interfaces();
    std::optional<Station> station(std::uint32_t interfaceIndex);
    std::optional<int> noise(std::uint32_t interfaceIndex);

private:
    /// The answer to a dump, empty when it is refused.
    ByteBuffer dump(std::uint8_t command, std::optional<std::uint32_t> interfaceIndex);

    NetlinkSocket socket_;
    std::optional<std::uint16_t> family_;
};

} // namespace pacelet::Linux
