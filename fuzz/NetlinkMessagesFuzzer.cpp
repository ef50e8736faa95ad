#include "Hosts/Linux/Network/Nl80211.h"
#include "Hosts/Linux/Network/RouteTable.h"
#include "Hosts/Linux/Network/SocketDiag.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet::Linux;
    const Bytes answer = std::as_bytes(std::span{data, size});
    std::vector<SocketCounters> sockets;
    parseSocketCounters(answer, LocalNetworks{}, sockets);
    const std::vector<Interface> interfaces = parseInterfaces(answer);
    if (const Interface* const chosen = defaultInterface(parseDefaultRoutes(answer), interfaces)) {
        isEthernet(*chosen);
    }
    parseFamilyNumber(answer);
    for (const WirelessInterface& wireless : parseWirelessInterfaces(answer)) {
        bandOfFrequency(wireless.frequencyMHz.value_or(0));
    }
    parseStation(answer);
    parseNoise(answer);
    return 0;
}
