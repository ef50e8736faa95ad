#include "Hosts/Linux/Proc/ProcessTable.h"

#include "Hosts/Linux/Proc/ProcPath.h"
#include "Hosts/Linux/Proc/ProcStat.h"

#include <algorithm>
#include <limits>
#include <unistd.h>
#include <utility>

namespace pacelet::Linux {

namespace {

/// No machine has more: a figure past it is a fault of the kernel, and must not overflow later on.
constexpr std::int64_t mostKilobytes = std::int64_t{1} << 50;

/// So few that two such times in hundredths add up within 64 bits.
constexpr std::uint64_t mostSeconds = std::numeric_limits<std::int64_t>::max() / 300;

std::int64_t hundredths(std::uint64_t ticks, std::uint64_t ticksPerSecond) {
    const std::uint64_t seconds = std::min(ticks / ticksPerSecond, mostSeconds);
    return static_cast<std::int64_t>(seconds * 100 + ticks % ticksPerSecond * 100 / ticksPerSecond);
}

} // namespace

ProcessTable::ProcessTable(const std::string& procFolder, DesktopPlaces places)
    : proc_{procFolder}, apps_{std::move(places)}, known_{proc_, apps_},
      ticksPerSecond_{static_cast<std::uint64_t>(std::max(1L, ::sysconf(_SC_CLK_TCK)))},
      kilobytesPerPage_{std::max<std::int64_t>(1, ::sysconf(_SC_PAGESIZE) / 1024)} {}

const std::vector<ProcessRow>& ProcessTable::read(Seconds uptime) {
    rows_.clear();
    pending_.clear();
    proc_.listNumbers(pids_, listing_);
    if (!std::is_sorted(pids_.begin(), pids_.end())) {
        std::sort(pids_.begin(), pids_.end());
    }
    known_.beginSweep(uptime);
    for (const std::int32_t pid : pids_) {
        readRow(pid, uptime);
    }
    learnPending();
    known_.endSweep(rows_.size());
    std::erase_if(rows_, [](const ProcessRow& row) { return row.process == nullptr; });
    return rows_;
}

void ProcessTable::readRow(std::int32_t pid, Seconds uptime) {
    const bool mayHold = rows_.size() < holdable_;
    KnownProcess& known = known_.at(pid);
    const auto glance = known.files.look(proc_, pid, mayHold, buffer_);
    const auto stat = glance ? parseProcStat(glance->stat) : std::nullopt;
    if (!stat || stat->pid != pid) {
        return;
    }
    ProcessRow& row = rows_.emplace_back();
    row.pid = pid;
    row.ppid = stat->ppid;
    row.uid = glance->uid;
    row.cpuHundredths =
        hundredths(stat->userTime, ticksPerSecond_) + hundredths(stat->systemTime, ticksPerSecond_);
    row.residentKilobytes =
        std::clamp<std::int64_t>(stat->residentPages, 0, mostKilobytes / kilobytesPerPage_) *
        kilobytesPerPage_;
    row.age = uptime -
              Seconds{static_cast<double>(stat->startTime) / static_cast<double>(ticksPerSecond_)};
    row.process = &known;
    if (known_.note(known, *stat)) {
        pending_.push_back({stat->startTime, rows_.size() - 1, &known});
    }
}

void ProcessTable::learnPending() {
    // Parents start before their children, whatever their ids.
    std::stable_sort(pending_.begin(), pending_.end(),
                     [](const Pending& a, const Pending& b) { return a.startTime < b.startTime; });
    for (const Pending& pending : pending_) {
        ProcessRow& row = rows_[pending.row];
        if (!known_.learn(row.pid, *pending.process, row.age)) {
            row.process = nullptr;
        }
    }
}

std::optional<std::string_view> ProcessTable::commandLine(std::int32_t pid) {
    return proc_.read(ProcPath{pid, "cmdline"}.text(), buffer_);
}

} // namespace pacelet::Linux
