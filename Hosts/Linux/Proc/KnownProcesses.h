#pragma once

#include "Core/Support/Time.h"
#include "Hosts/Linux/Apps/AppAssociation.h"
#include "Hosts/Linux/Apps/BoxedApp.h"
#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Proc/FolderReader.h"
#include "Hosts/Linux/Proc/ProcStat.h"
#include "Hosts/Linux/Proc/ProcessFiles.h"
#include "Hosts/Linux/Proc/ProcessMemory.h"
#include "Hosts/Linux/Proc/ReapedTime.h"

#include <cstdint>
#include <memory>
#include <string>

namespace pacelet::Linux {

/// What tells, in the table itself, that a process may have got other memory than it had: none
/// comes without a fault, and none goes without less being resident.
struct MemoryMark {
    std::uint64_t minorFaults = 0;
    std::uint64_t majorFaults = 0;
    std::int64_t residentPages = 0;

    bool operator==(const MemoryMark&) const = default;
};

/// What is known of a process for as long as it runs one program, and need not be read again.
struct KnownProcess {
    ProcessFiles files;          ///< held open or not
    CPUAccount cpu;              ///< goes on when it runs another program
    std::uint64_t startTime = 0; ///< with the pid, the identity of the process
    std::string comm;            ///< this and the two below change when it runs another program
    std::uint64_t startCode = 0;
    std::uint64_t startStack = 0;

    std::int32_t ppid = 0; ///< this and the four below as they were noted last
    bool hasTerminal = false;
    bool isKernelThread = false;
    bool hasEnded = false;
    MemoryMark memoryMark;
    std::uint64_t sweep = 0;            ///< the last sweep in which it was there
    Seconds nextLook = Seconds::zero(); ///< uptime from which on its scope is looked at again

    std::optional<MemoryMark>
        memoryMarkThen; ///< when `memory` was read; nothing until somebody asks
    std::optional<ProcessMemory> memory;

    std::string path;       ///< the path under which it appears
    std::string executable; ///< the program's real path, or the script's
    std::string starter;    ///< name of what runs the script; empty for any other program
    std::string appID;      ///< desktop id of its application; empty without one
    std::string unit;       ///< the service that it runs in, without ending; empty outside of any
    AppRole role = AppRole::none;
    AssociationReason reason = AssociationReason::noApplication;
};

/// Remembers the processes from one look at the process table to the next. A look is a sweep:
/// `beginSweep`, `note` for each process, `learn` for those that are new or changed,
/// `endSweep`. For one thread at a time.
class KnownProcesses {
public:
    /// Both must outlive it.
    KnownProcesses(const FolderReader& proc, DesktopCatalog& apps);

    /// `uptime` is the time since boot.
    void beginSweep(Seconds uptime);

    /// The process with this number, as it was noted last; a blank one when it was not. It stays in
    /// place until it is forgotten.
    KnownProcess& at(std::int32_t pid) { return processes_[pid]; }

    /// Takes down that `process` is there, and as what. True when it must be learned.
    bool note(KnownProcess& process, const ProcStat& stat);

    /// Reads what `note` did not find known; parents before their children. False when the process
    /// has gone, or another has taken its pid, in the meantime. `age` is the time since its start.
    bool learn(std::int32_t pid, KnownProcess& process, Seconds age);

    /// Forgets the processes that were not noted in this sweep, and settles whose their processor
    /// time was. `noted` is how many were.
    void endSweep(std::size_t noted);

    /// The process with this number as it was noted last; null when it was not.
    const KnownProcess* find(std::int32_t pid) const;
    KnownProcess* find(std::int32_t pid);

    std::size_t size() const { return processes_.size(); }

private:
    bool isStillThere(std::int32_t pid, const KnownProcess& process);
    std::string readExecutable(std::int32_t pid, const KnownProcess& process);
    void findScript(std::int32_t pid, KnownProcess& process);
    void associateWithApp(std::int32_t pid, KnownProcess& process);
    Association associateWithBox(const ProcessFacts& facts, BoxKind kind);

    const FolderReader& proc_;
    DesktopCatalog& apps_;
    std::shared_ptr<const DesktopIndex> index_;
    KnownProcessMap processes_;
    ReapedTime reapedTime_;
    std::unordered_map<std::string, BoxedApp> boxes_; ///< by id; they stay where they are
    std::string ownContainer_;                        ///< id of the one that we run in ourselves
    ReadBuffer buffer_;
    std::uint64_t sweep_ = 0;
    Seconds uptime_{};
};

} // namespace pacelet::Linux
