#include "Hosts/Linux/Network/SocketTraffic.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <map>
#include <unordered_map>

namespace pacelet::Linux {

namespace {

/// Bytes per second below which nobody needs to know.
constexpr double noteworthyRate = 16 << 10;

double advance(std::uint64_t before, std::uint64_t after) {
    return after > before ? static_cast<double>(after - before) : 0;
}

} // namespace

std::vector<SocketTraffic> totalTraffic(const SocketSample& sample) {
    std::vector<SocketTraffic> traffic;
    traffic.reserve(sample.sockets.size());
    for (const SocketCounters& socket : sample.sockets) {
        traffic.push_back({socket.inode, static_cast<double>(socket.bytesReceived),
                           static_cast<double>(socket.bytesSent)});
    }
    return traffic;
}

std::vector<SocketTraffic> trafficRates(const SocketSample& before, const SocketSample& after) {
    const double seconds = (after.takenAt - before.takenAt).count();
    std::vector<SocketTraffic> rates;
    if (!(seconds > 0)) {
        return rates;
    }
    std::unordered_map<std::uint64_t, const SocketCounters*> known;
    known.reserve(before.sockets.size());
    for (const SocketCounters& socket : before.sockets) {
        known.emplace(socket.cookie, &socket);
    }
    rates.reserve(after.sockets.size());
    for (const SocketCounters& socket : after.sockets) {
        const auto place = known.find(socket.cookie);
        const SocketCounters earlier = place == known.end() ? SocketCounters{} : *place->second;
        rates.push_back({socket.inode,
                         advance(earlier.bytesReceived, socket.bytesReceived) / seconds,
                         advance(earlier.bytesSent, socket.bytesSent) / seconds});
    }
    return rates;
}

SocketTraffic otherTraffic(const SocketSample& before, const SocketSample& after,
                           const std::vector<SocketTraffic>& rates, const SocketOwners& owners) {
    const double seconds = (after.takenAt - before.takenAt).count();
    if (!(seconds > 0)) {
        return {};
    }
    SocketTraffic known;
    SocketTraffic unowned;
    for (const SocketTraffic& rate : rates) {
        SocketTraffic& sum = owners.pidOf(rate.inode) ? known : unowned;
        sum.bytesIn += rate.bytesIn;
        sum.bytesOut += rate.bytesOut;
    }
    const auto other = [&](std::uint64_t LinkCounters::*bytes, std::uint64_t LinkCounters::*packets,
                           double knownRate, double unownedRate) {
        // Ethernet, IP and TCP with its usual option; more of them are sent than are needed.
        constexpr double headerBytes = 66;
        constexpr double noteworthyShare = 0.1;
        const double all = advance(before.links.*bytes, after.links.*bytes) / seconds;
        const double headers =
            headerBytes * advance(before.links.*packets, after.links.*packets) / seconds;
        const double rest = std::max(all - headers - knownRate, unownedRate);
        return rest >= std::max(noteworthyRate, noteworthyShare * all) ? rest : 0;
    };
    return {0,
            other(&LinkCounters::bytesIn, &LinkCounters::packetsIn, known.bytesIn, unowned.bytesIn),
            other(&LinkCounters::bytesOut, &LinkCounters::packetsOut, known.bytesOut,
                  unowned.bytesOut)};
}

std::string otherTrafficLine(const SocketTraffic& other) {
    return other.bytesIn + other.bytesOut > 0
               ? fmt::format("Other traffic (UDP and other users).0,{:.0f},{:.0f},\n",
                             other.bytesIn, other.bytesOut)
               : std::string{};
}

std::string trafficBlock(const std::vector<SocketTraffic>& traffic, const SocketOwners& owners) {
    std::map<std::int32_t, SocketTraffic> sums;
    for (const SocketTraffic& socket : traffic) {
        if (const auto pid = owners.pidOf(socket.inode)) {
            SocketTraffic& sum = sums[*pid];
            sum.bytesIn += socket.bytesIn;
            sum.bytesOut += socket.bytesOut;
        }
    }
    std::string text = ",bytes_in,bytes_out,\n";
    for (const auto& [pid, sum] : sums) {
        fmt::format_to(std::back_inserter(text), "{}.{},{:.0f},{:.0f},\n", owners.nameOf(pid), pid,
                       sum.bytesIn, sum.bytesOut);
    }
    return text;
}

} // namespace pacelet::Linux
