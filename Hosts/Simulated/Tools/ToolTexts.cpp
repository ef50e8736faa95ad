#include "Hosts/Simulated/Tools/ToolTexts.h"

#include <algorithm>
#include <cmath>
#include <fmt/compile.h>
#include <fmt/format.h>
#include <iterator>
#include <string_view>
#include <unordered_map>

namespace pacelet::Simulated::ToolTexts {

namespace {

// Memory breathes by this part of itself, so that no two listings are alike.
constexpr double breath = 0.012;

std::int64_t residentKilobytes(const Process& process, Seconds awake) {
    const double around = std::sin(awake.count() / 47 + process.pid);
    return static_cast<std::int64_t>(static_cast<double>(process.resident) *
                                     (1 + breath * around)) /
           1024;
}

struct CPUTimeText {
    std::int64_t minutes;
    std::int64_t seconds;
    std::int64_t hundredths;
};

CPUTimeText textOf(Seconds cpuTime) {
    const auto hundredths = static_cast<std::int64_t>(cpuTime.count() * 100);
    return {hundredths / 6000, hundredths / 100 % 60, hundredths % 100};
}

} // namespace

// The listing is read in every tick, so its format is compiled, and its floats are written as the
// integers that they are at one or two decimals.
std::string processes(const World& world) {
    fmt::memory_buffer text;
    const Seconds awake = world.time.awake;
    for (const Process& process : world.processes.all()) {
        const CPUTimeText time = textOf(process.cpuTime(awake));
        const auto tenths = std::llround(process.load.at(awake) * 10);
        fmt::format_to(fmt::appender(text),
                       FMT_COMPILE("{:5} {:5} {:5} {:<16} {:3}:{:02}.{:02} {:6} {:3}.{} {}\n"),
                       process.pid, process.ppid, process.user.uid, process.user.name, time.minutes,
                       time.seconds, time.hundredths, residentKilobytes(process, awake),
                       tenths / 10, tenths % 10, process.path);
    }
    return fmt::to_string(text);
}

std::string commandLines(const World& world) {
    fmt::memory_buffer text;
    for (const Process& process : world.processes.all()) {
        fmt::format_to(std::back_inserter(text), "{:5} {:6} {}{}{}\n", process.pid,
                       residentKilobytes(process, world.time.awake), process.path,
                       process.arguments.empty() ? "" : " ", process.arguments);
    }
    return fmt::to_string(text);
}

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

std::string launchJobs(const World& world) {
    std::unordered_map<std::string_view, std::int32_t> pids;
    for (const Process& process : world.processes.all()) {
        if (process.user.uid == ann.uid) {
            pids.emplace(process.path, process.pid);
        }
    }
    fmt::memory_buffer text;
    auto out = std::back_inserter(text);
    fmt::format_to(out, "PID\tStatus\tLabel\n");
    for (const LaunchJob& job : world.jobs) {
        const auto found = pids.find(job.program);
        const std::string pid = found != pids.end() ? std::to_string(found->second) : "-";
        fmt::format_to(out, "{}\t0\t{}\n", pid, job.label);
    }
    return fmt::to_string(text);
}

std::string hardware(const World& world) {
    const Hardware& parts = world.hardware;
    const std::string processors = parts.appleSilicon ? fmt::format("\"{}\"", parts.processors)
                                                      : std::string{parts.processors};
    return fmt::format(R"({{
  "SPHardwareDataType" : [
    {{
      "_name" : "hardware_overview",
      "activation_lock_status" : "activation_lock_disabled",
      "{}" : "{}",
      "machine_model" : "{}",
      "machine_name" : "{}",
      "number_processors" : {},
      "physical_memory" : "{} GB"
    }}
  ]
}}
)",
                       parts.appleSilicon ? "chip_type" : "cpu_type", parts.chip, parts.model,
                       parts.machineName, processors, parts.memoryBytes / gibibyte);
}

} // namespace pacelet::Simulated::ToolTexts
