#include "Hosts/Simulated/Tools/ToolTexts.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <string_view>
#include <unordered_map>

namespace pacelet::Simulated::ToolTexts {

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
