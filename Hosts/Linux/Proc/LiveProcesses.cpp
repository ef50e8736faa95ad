#include "Hosts/Linux/Proc/LiveProcesses.h"

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

/// So few that four such times in hundredths add up within 64 bits.
constexpr std::uint64_t mostSeconds = std::numeric_limits<std::int64_t>::max() / 500;

std::int64_t hundredths(std::uint64_t ticks, std::uint64_t ticksPerSecond) {
    const std::uint64_t seconds = std::min(ticks / ticksPerSecond, mostSeconds);
    return static_cast<std::int64_t>(seconds * 100 + ticks % ticksPerSecond * 100 / ticksPerSecond);
}

} // namespace

LiveProcesses::LiveProcesses(const std::string& procFolder, DesktopPlaces places)
    : proc_{procFolder},
      apps_{std::move(places)},
      known_{proc_, apps_},
      ticksPerSecond_{static_cast<std::uint64_t>(std::max(1L, ::sysconf(_SC_CLK_TCK)))},
      kilobytesPerPage_{std::max<std::int64_t>(1, ::sysconf(_SC_PAGESIZE) / 1024)},
      processors_{static_cast<double>(std::max(1L, ::sysconf(_SC_NPROCESSORS_ONLN)))} {}

const std::vector<ProcessRow>& LiveProcesses::read(Seconds uptime) {
    sinceLast_ = lastUptime_ > Seconds::zero() ? uptime - lastUptime_ : Seconds::zero();
    lastUptime_ = uptime;
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
    countTime();
    return rows_;
}

void LiveProcesses::readRow(std::int32_t pid, Seconds uptime) {
    const bool mayHold = rows_.size() < holdable_;
    KnownProcess& known = known_.at(pid);
    const auto glance = known.files.look(proc_, pid, mayHold, buffer_);
    const auto stat = glance ? parseProcStat(glance->stat) : std::nullopt;
    if (!stat || stat->pid != pid) {
        return;
    }
    // The kernel tells a start in whole ticks: one right after the last look may seem to be before.
    constexpr Seconds startPrecision{0.02};
    ProcessRow& row = rows_.emplace_back();
    row.pid = pid;
    row.ppid = stat->ppid;
    row.uid = glance->uid;
    row.residentKilobytes =
        std::clamp<std::int64_t>(stat->residentPages, 0, mostKilobytes / kilobytesPerPage_) *
        kilobytesPerPage_;
    row.age = uptime -
              Seconds{static_cast<double>(stat->startTime) / static_cast<double>(ticksPerSecond_)};
    row.process = &known;
    if (known_.note(known, *stat)) {
        pending_.push_back({stat->startTime, rows_.size() - 1, &known});
    }
    known.cpu.look(hundredths(stat->userTime, ticksPerSecond_) +
                       hundredths(stat->systemTime, ticksPerSecond_),
                   hundredths(stat->reapedUserTime, ticksPerSecond_) +
                       hundredths(stat->reapedSystemTime, ticksPerSecond_),
                   row.age <= sinceLast_ + startPrecision);
}

void LiveProcesses::countTime() {
    // What children used up cannot exceed what there was; two looks are never quite even.
    constexpr double unevenness = 1.1;
    const auto most =
        static_cast<std::int64_t>(sinceLast_.count() * 100 * processors_ * unevenness);
    for (ProcessRow& row : rows_) {
        CPUAccount& cpu = row.process->cpu;
        cpu.credit(most);
        row.cpuHundredths = cpu.counted();
        row.shownHundredths = cpu.shown;
    }
}

void LiveProcesses::markShown() {
    for (const ProcessRow& row : rows_) {
        row.process->cpu.shown = row.cpuHundredths;
    }
}

void LiveProcesses::learnPending() {
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

std::optional<CountedMemory> LiveProcesses::memory(std::int32_t pid) {
    KnownProcess* const process = known_.find(pid);
    if (process == nullptr) {
        return readCountedMemory(proc_, pid, buffer_);
    }
    if (process->memoryMarkThen != process->memoryMark) {
        const auto counted = readCountedMemory(proc_, pid, buffer_);
        process->memory = counted ? std::optional{counted->memory} : std::nullopt;
        process->memoryMarkThen = process->memoryMark;
    }
    return process->memory ? std::optional{CountedMemory{*process->memory, process->ppid}}
                           : std::nullopt;
}

std::optional<std::string_view> LiveProcesses::commandLine(std::int32_t pid) {
    return proc_.read(ProcPath{pid, "cmdline"}.text(), buffer_);
}

} // namespace pacelet::Linux
