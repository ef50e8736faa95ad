#include "Hosts/Linux/Network/SocketTraffic.h"

#include <fmt/format.h>
#include <iterator>
#include <map>
#include <unordered_map>

namespace pacelet::Linux {

namespace {

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
