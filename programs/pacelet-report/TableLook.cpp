#include "programs/pacelet-report/TableLook.h"

#include "Core/Sampling/AppGrouper.h"
#include "Core/Sampling/CPUMeter.h"
#include "programs/pacelet-report/CapturedTable.h"
#include "programs/pacelet-report/InputFile.h"

#include <fmt/format.h>
#include <limits>
#include <utility>

namespace pacelet::report {

namespace {

/// More than any machine has cores. Two tables may tell a figure that neither of them holds.
constexpr double mostCPUPercent = 1e7;

/// Where nobody says how many there are, nothing is known to take a large part of them.
constexpr std::int64_t unknownCores = std::numeric_limits<std::int64_t>::max();

CapturedTable readTable(const std::string& path) {
    CapturedTable table = CapturedTable::parse(readInput(path));
    if (table.processes.empty()) {
        throw FileError{fmt::format("no process could be read from {}; it takes the output of "
                                    "`ps -axo pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm=`, "
                                    "`ps aux` or `ps -ef`",
                                    inputName(path))};
    }
    return table;
}

} // namespace

Look lookAtTables(const Options& options, std::uint32_t uid) {
    CapturedTable table = readTable(*options.psFile);
    std::optional<Snapshot> previous;
    Seconds takenAt{0};
    if (options.laterPSFile) {
        previous = Snapshot{TimePoint{}, std::move(table.processes)};
        table = readTable(*options.laterPSFile);
        takenAt = options.seconds;
    } else if (!table.tellsCPU) {
        throw FileError{fmt::format("{} tells no use of CPU; take two tables, some seconds apart, "
                                    "or the output of `ps aux`",
                                    inputName(*options.psFile))};
    }
    Look look;
    look.system = table.isOfLinux ? OperatingSystem::linuxDesktop : OperatingSystem::macOS;
    look.known = {options.cores.has_value(), false, table.tellsMemory};
    look.reading.snapshot = {TimePoint{takenAt}, std::move(table.processes)};
    const auto noFootprint = [](std::int32_t) { return std::optional<std::int64_t>{}; };
    auto usages = CPUMeter::usage(previous, look.reading.snapshot, noFootprint);
    std::erase_if(usages, [](const auto& usage) { return usage.cpuPercent > mostCPUPercent; });
    const double total = CPUMeter::total(usages);
    look.reading.groups = AppGrouper::group(std::move(usages), uid);
    look.reading.signals.coreCount = options.cores.value_or(unknownCores);
    look.reading.signals.cpuLoadPercent =
        SystemSignals::cpuLoad(total, look.reading.signals.coreCount);
    return look;
}

} // namespace pacelet::report
