#include "benchmarks/truth/Line.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <stdexcept>

namespace pacelet::truth {

namespace {

/// How long a full queue takes to drain.
constexpr double smallQueueSeconds = 0.03;
constexpr double bloatedQueueSeconds = 0.5;
constexpr double smallestQueue = 15'000; ///< bytes: ten packets

std::string besideThis(const char* program) {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / program;
}

void shape(const char* device, double mbps, bool isBloated) {
    const double bytesPerSecond = mbps * 1e6 / 8;
    const double queue = bytesPerSecond * (isBloated ? bloatedQueueSeconds : smallQueueSeconds);
    // What a timer that is late on a crowded machine must make up for.
    const double burst = std::max(bytesPerSecond * 0.01, 5000.0);
    onTheLine(
        fmt::format("tc qdisc replace dev {} root tbf rate {:.0f}bit burst {:.0f} limit {:.0f}",
                    device, mbps * 1e6, burst, std::max(queue, smallestQueue) + burst));
}

/// Both ways go through it.
testing::ChildProgram delayLine(int roundTripMs) {
    return {{"ip", "netns", "exec", "line", besideThis("delay-line"), "delay",
             std::to_string(roundTripMs / 2)},
            {}};
}

} // namespace

void onTheLine(const std::string& command) {
    if (std::system(("ip netns exec line " + command).c_str()) != 0) {
        throw std::runtime_error{"failed: " + command};
    }
}

Line::Line(const LineShape& shape)
    : delay_{delayLine(shape.roundTripMs)} {
    // A server that is far ahead of the line would answer late for reasons of its own; one that is
    // not ahead would leave gaps in it.
    onTheLine(fmt::format("ip netns exec server sysctl -qw net.ipv4.tcp_notsent_lowat={:.0f}",
                          std::max(shape.downMbps * 1e6 / 8 * 0.005, 16384.0)));
    // Cubic's slow start ends when round trips get longer, Reno's when the queue is full.
    const char* const window = shape.isBloated ? "reno" : "cubic";
    onTheLine(fmt::format(
        "sh -c \"ip -n server route change default via 198.51.100.1 congctl {0} 2>/dev/null;"
        "ip -n client route change default via 192.0.2.1 congctl {0} 2>/dev/null; true\"",
        window));
    truth::shape("c1", shape.downMbps, shape.isBloated);
    truth::shape("s1", shape.upMbps(), shape.isBloated);
}

} // namespace pacelet::truth
