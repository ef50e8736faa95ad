#include "Hosts/Linux/Proc/KnownProcesses.h"

#include "Core/Platform/ProcessSample.h"
#include "Core/Support/Files.h"
#include "Hosts/Linux/Apps/AppScope.h"
#include "Hosts/Linux/Apps/AppTables.h"
#include "Hosts/Linux/Proc/CommandLine.h"
#include "Hosts/Linux/Proc/ProcPath.h"
#include "Hosts/Linux/Proc/ShownText.h"

#include <algorithm>
#include <filesystem>
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

KnownProcesses::KnownProcesses(const FolderReader& proc, DesktopCatalog& apps)
    : proc_{proc},
      apps_{apps} {
    // Where all are in the container that we are in, it tells nothing.
    if (const auto box = boxedApp({}, proc_.read("self/cgroup", buffer_).value_or(""))) {
        ownContainer_ = box->app.id;
    }
}

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
        process = KnownProcess{.files = std::move(process.files),
                               .cpu = isNew ? CPUAccount{} : process.cpu};
        process.startTime = stat.startTime;
        process.comm = stat.comm;
        process.startCode = stat.startCode;
        process.startStack = stat.startStack;
        process.isKernelThread = stat.isKernelThread;
    }
    process.ppid = stat.ppid;
    process.hasTerminal = stat.terminal != 0;
    process.hasEnded = stat.hasEnded();
    process.memoryMark = {stat.minorFaults, stat.majorFaults, stat.residentPages};
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
        findScript(pid, process);
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

void KnownProcesses::findScript(std::int32_t pid, KnownProcess& process) {
    const std::string_view program = executableName(process.executable);
    const bool mayRunScript = AppTables::contains(AppTables::interpreters, program) ||
                              AppTables::contains(AppTables::shells, program);
    if (!mayRunScript || process.hasEnded) {
        return;
    }
    const auto commandLine = proc_.read(ProcPath{pid, "cmdline"}.text(), buffer_);
    std::string script{CommandLine::script(commandLine.value_or(""))};
    if (script.empty()) {
        return;
    }
    if (!script.starts_with('/')) {
        const auto folder = proc_.readLink(ProcPath{pid, "cwd"}.text(), buffer_);
        script = folder ? joinedPath(*folder, script) : std::string{};
    }
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(script, error);
    if (!error && std::filesystem::is_regular_file(real, error)) {
        process.starter = program;
        process.executable = shownPath(real.string());
    }
}

Association KnownProcesses::associateWithBox(const ProcessFacts& facts, BoxKind kind) {
    std::optional<BoxedApp> box = boxedApp(facts.executable, facts.cgroup);
    if (!box || box->kind != kind || box->app.id == ownContainer_) {
        // The file of an AppImage runs as long as what it holds, as a child of it.
        const auto parent = boxes_.find(std::string{facts.parentAppID});
        const bool isOfParent =
            kind == BoxKind::package && parent != boxes_.end() && isAppImageFile(facts.executable);
        return isOfParent
                   ? Association{AssociationReason::box, &parent->second.app, AppRole::helper}
                   : Association{};
    }
    std::string id = box->app.id;
    const DesktopApp& app = boxes_.try_emplace(std::move(id), *std::move(box)).first->second.app;
    const bool isContainer = kind == BoxKind::container;
    return {isContainer ? AssociationReason::container : AssociationReason::box, &app,
            roleInBox(facts, app.id)};
}

void KnownProcesses::associateWithApp(std::int32_t pid, KnownProcess& process) {
    const std::string cgroup{proc_.read(ProcPath{pid, "cgroup"}.text(), buffer_).value_or("")};
    ProcessFacts facts;
    facts.executable = process.executable;
    facts.starter = process.starter;
    facts.cgroup = cgroup;
    facts.hasTerminal = process.hasTerminal;
    if (const auto parent = processes_.find(process.ppid); parent != processes_.end()) {
        facts.parentExecutable = parent->second.executable;
        facts.parentStarter = parent->second.starter;
        facts.parentAppID = parent->second.appID;
    }
    process.unit = serviceUnit(cgroup);
    facts.commandLine = proc_.read(ProcPath{pid, "cmdline"}.text(), buffer_).value_or("");
    Association association = associateWithBox(facts, BoxKind::container);
    if (association.app == nullptr) {
        association = associate(*index_, facts);
    }
    if (association.reason == AssociationReason::noApplication) {
        if (const Association box = associateWithBox(facts, BoxKind::package); box.app != nullptr) {
            association = box;
        }
    }
    if (process.role == AppRole::helper && association.app != nullptr &&
        association.app->id == process.appID) {
        // A helper that lost its parent is still a helper.
        association.role = AppRole::helper;
    }
    process.path = bundledPath(association, process.executable,
                               CommandLine::part(facts.commandLine, process.comm));
    process.appID = association.app != nullptr ? association.app->id : std::string{};
    process.role = association.role;
    process.reason = association.reason;
}

const KnownProcess* KnownProcesses::find(std::int32_t pid) const {
    const auto found = processes_.find(pid);
    return found == processes_.end() ? nullptr : &found->second;
}

KnownProcess* KnownProcesses::find(std::int32_t pid) {
    const auto found = processes_.find(pid);
    return found == processes_.end() ? nullptr : &found->second;
}

void KnownProcesses::endSweep(std::size_t noted) {
    if (processes_.size() != noted) {
        const auto hasGone = [&](const auto& entry) { return entry.second.sweep != sweep_; };
        for (const auto& entry : processes_) {
            if (hasGone(entry)) {
                reapedTime_.addEnded(entry.second, processes_, sweep_);
            }
        }
        std::erase_if(processes_, hasGone);
    }
    reapedTime_.settle(processes_);
}

} // namespace pacelet::Linux
