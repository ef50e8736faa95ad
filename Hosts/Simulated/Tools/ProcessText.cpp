#include "Hosts/Simulated/Tools/ToolTexts.h"

#include <cmath>
#include <fmt/format.h>
#include <iterator>

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

std::string processes(const World& world) {
    fmt::memory_buffer text;
    const Seconds awake = world.time.awake;
    for (const Process& process : world.processes.all()) {
        const CPUTimeText time = textOf(process.cpuTime(awake));
        fmt::format_to(std::back_inserter(text),
                       "{:5} {:5} {:5} {:<16} {:3}:{:02}.{:02} {:6} {:5.1f} {}\n", process.pid,
                       process.ppid, process.user.uid, process.user.name, time.minutes,
                       time.seconds, time.hundredths, residentKilobytes(process, awake),
                       process.load.at(awake), process.path);
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

} // namespace pacelet::Simulated::ToolTexts
