#include "Hosts/Simulated/Tools/ToolTexts.h"

#include <cmath>
#include <fmt/compile.h>
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

} // namespace pacelet::Simulated::ToolTexts
