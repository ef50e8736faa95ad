#include "Hosts/Linux/Proc/KnownProcesses.h"

#include "Hosts/Linux/Proc/ProcPath.h"
#include "Hosts/Linux/Proc/ShownText.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace pacelet::Linux {

namespace {

/// Desktops move an application into its scope only after they started it: at this age it is there.
constexpr Seconds settlingTime{10};

/// Until then it is looked at again now and then, ever more seldom as it grows older.
Seconds nextLookAt(Seconds uptime, Seconds age) {
    constexpr Seconds never{std::numeric_limits<double>::infinity()};
    return age >= settlingTime ? never : uptime + Seconds{1} + age;
}

constexpr std::string_view deletedMark = " (deleted)";

/// Workers of the kernel carry what they last worked on in their names, "kworker/0:1-events": that
/// changes from moment to moment, and the same thread must go on under the same name. A slash in
/// the name of a thread separates no folders, and is written as a colon.
std::string kernelThreadName(std::string_view comm) {
    constexpr std::string_view worker = "kworker/";
    constexpr std::string_view rescuer = "kworker/R-";
    if (comm.starts_with(worker) && !comm.starts_with(rescuer)) {
        comm = comm.substr(0, comm.find_first_of("-+", worker.size()));
    }
    std::string name{comm};
    std::ranges::replace(name, '/', ':');
    return name;
}

/// The program that the first argument names when it is a path, else nothing (empty).
std::string_view programOfCommandLine(std::string_view commandLine) {
    std::string_view program = commandLine.substr(0, commandLine.find('\0'));
    // Some processes write all their arguments into one.
    program = program.substr(0, program.find(" -"));
    return program.starts_with('/') ? program : std::string_view{};
}

} // namespace

void KnownProcesses::beginSweep(Seconds uptime) {
    ++sweep_;
    uptime_ = uptime;
    auto index = apps_.current();
    if (index != index_) {
        index_ = std::move(index);
        for (auto& [pid, process] : processes_) {
            process.nextLook = Seconds::zero();
        }
    }
}

bool KnownProcesses::note(KnownProcess& process, const ProcStat& stat) {
    const bool isNew = process.sweep == 0 || process.startTime != stat.startTime;
    const bool runsAnother = process.comm != stat.comm || process.startCode != stat.startCode ||
                             process.startStack != stat.startStack;
    // What has ended has no program any more; it keeps the one it had.
    const bool isChanged = isNew || (runsAnother && !stat.hasEnded());
    if (isChanged) {
        process = KnownProcess{.files = std::move(process.files)};
        process.startTime = stat.startTime;
        process.comm = stat.comm;
        process.startCode = stat.startCode;
        process.startStack = stat.startStack;
        process.isKernelThread = stat.isKernelThread;
    }
    process.ppid = stat.ppid;
    process.hasTerminal = stat.terminal != 0;
    process.hasEnded = stat.hasEnded();
    process.sweep = sweep_;
    return isChanged || (uptime_ >= process.nextLook && !process.hasEnded);
}

bool KnownProcesses::learn(std::int32_t pid, KnownProcess& process, Seconds age) {
    if (process.isKernelThread) {
        process.path = process.executable = shownPath(kernelThreadName(process.comm));
        process.reason = AssociationReason::kernelThread;
        process.nextLook = nextLookAt(uptime_, settlingTime);
        return true;
    }
    if (process.executable.empty()) {
        process.executable = readExecutable(pid, process);
    }
    associateWithApp(pid, process);
    process.nextLook = nextLookAt(uptime_, age);
    return isStillThere(pid, process);
}

bool KnownProcesses::isStillThere(std::int32_t pid, const KnownProcess& process) {
    const auto text = proc_.read(ProcPath{pid, "stat"}.text(), buffer_);
    const auto stat = text ? parseProcStat(*text) : std::nullopt;
    return stat && stat->startTime == process.startTime;
}

std::string KnownProcesses::readExecutable(std::int32_t pid, const KnownProcess& process) {
    if (process.hasEnded) {
        return shownPath(process.comm);
    }
    if (auto target = proc_.readLink(ProcPath{pid, "exe"}.text(), buffer_)) {
        if (target->ends_with(deletedMark)) {
            target->remove_suffix(deletedMark.size());
        }
        return shownPath(*target);
    }
    // Only the owner may follow the link, but everybody may read the command line.
    const auto commandLine = proc_.read(ProcPath{pid, "cmdline"}.text(), buffer_);
    const std::string_view program = programOfCommandLine(commandLine.value_or(""));
    return shownPath(program.empty() ? process.comm : program);
}

void KnownProcesses::associateWithApp(std::int32_t pid, KnownProcess& process) {
    ProcessFacts facts;
    facts.executable = process.executable;
    facts.cgroup = proc_.read(ProcPath{pid, "cgroup"}.text(), buffer_).value_or("");
    facts.hasTerminal = process.hasTerminal;
    if (const auto parent = processes_.find(process.ppid); parent != processes_.end()) {
        facts.parentExecutable = parent->second.executable;
        facts.parentAppID = parent->second.appID;
    }
    Association association = associate(*index_, facts);
    if (process.role == AppRole::helper && association.app != nullptr &&
        association.app->id == process.appID) {
        // A helper that lost its parent is still a helper.
        association.role = AppRole::helper;
    }
    process.path = bundledPath(association, process.executable);
    process.appID = association.app != nullptr ? association.app->id : std::string{};
    process.role = association.role;
    process.reason = association.reason;
}

void KnownProcesses::endSweep(std::size_t noted) {
    if (processes_.size() != noted) {
        std::erase_if(processes_, [&](const auto& entry) { return entry.second.sweep != sweep_; });
    }
}

} // namespace pacelet::Linux
