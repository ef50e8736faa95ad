#include "Hosts/Simulated/Tools/ToolTexts.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <iterator>

namespace pacelet::Simulated::ToolTexts {

namespace {

// The kernel keeps this much of a process's name, and the tool prints no more.
constexpr std::size_t longestName = 16;

constexpr std::string_view header = ",bytes_in,bytes_out,\n";

/// Transfers come in bursts around their mean.
double burst(const World& world, const Traffic& traffic) {
    return 1 + 0.15 * std::sin(world.time.awake.count() / 3.1 + traffic.pid);
}

void writeSample(const World& world, fmt::memory_buffer& text, double seconds) {
    auto out = std::back_inserter(text);
    fmt::format_to(out, "{}", header);
    for (const Process& process : world.processes.all()) {
        const auto& list = world.network.traffic;
        const auto found = std::find_if(list.begin(), list.end(), [&](const Traffic& traffic) {
            return traffic.pid == process.pid;
        });
        const std::string_view name = process.name().substr(0, longestName);
        if (found == list.end()) {
            continue;
        }
        const double share = seconds * burst(world, *found);
        fmt::format_to(out, "{}.{},{},{},\n", name, process.pid,
                       std::llround(static_cast<double>(found->in) * share),
                       std::llround(static_cast<double>(found->out) * share));
    }
}

} // namespace

Shell::Output networkQuality(const World& world) {
    const Network& network = world.network;
    if (!network.path.satisfied) {
        return {1,
                {},
                "Error: Error Domain=NSURLErrorDomain Code=-1009 \"The Internet connection appears "
                "to be offline.\"\n"};
    }
    const Line& line = network.line;
    std::string text = "{\n";
    if (line.baseRTT) {
        text += fmt::format("  \"base_rtt\" : {},\n", *line.baseRTT);
    }
    text += fmt::format("  \"dl_flows\" : 12,\n  \"dl_throughput\" : {},\n"
                        "  \"interface_name\" : \"{}\",\n",
                        std::llround(line.downloadBitsPerSecond),
                        network.path.usesWiFi ? "en0" : "en7");
    if (line.responsiveness) {
        text += fmt::format("  \"responsiveness\" : {},\n", *line.responsiveness);
    }
    text += fmt::format("  \"ul_flows\" : 12,\n  \"ul_throughput\" : {}\n}}\n",
                        std::llround(line.uploadBitsPerSecond));
    return {0, std::move(text), {}};
}

std::string traffic(const World& world) {
    fmt::memory_buffer text;
    if (!world.network.path.satisfied) {
        text.append(header);
        text.append(header);
        return fmt::to_string(text);
    }
    // The first sample holds what moved since the machine started; a baseline.
    writeSample(world, text, world.uptime().count());
    writeSample(world, text, 1);
    return fmt::to_string(text);
}

} // namespace pacelet::Simulated::ToolTexts
