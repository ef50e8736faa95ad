#pragma once

#include "Core/Support/Time.h"
#include "Hosts/Linux/Apps/AppAssociation.h"
#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Proc/FolderReader.h"
#include "Hosts/Linux/Proc/ProcStat.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

namespace pacelet::Linux {

/// What is known of a process for as long as it runs one program, and need not be read again.
struct KnownProcess {
    std::uint64_t startTime = 0; ///< with the pid, the identity of the process
    std::string comm;            ///< this and the two below change when it runs another program
    std::uint64_t startCode = 0;
    std::uint64_t startStack = 0;

    std::string executable; ///< the program's real path
    std::string path;       ///< the path under which it appears
    std::string appID;      ///< desktop id of its application; empty without one
    AppRole role = AppRole::none;
    AssociationReason reason = AssociationReason::noApplication;

    std::int32_t ppid = 0;    ///< at the time it was learned
    bool hasTerminal = false; ///< the same
    bool isKernelThread = false;
    bool hasEnded = false;
    Seconds nextLook{};      ///< uptime from which on its scope is to be looked at again
    std::uint64_t sweep = 0; ///< the last sweep in which it was there
};

/// Remembers the processes from one look at the process table to the next. A look is a sweep:
/// `beginSweep`, `note` for each process, `learn` for those that are new or changed, `endSweep`.
/// For one thread at a time.
class KnownProcesses {
public:
    /// Both must outlive it.
    KnownProcesses(const FolderReader& proc, DesktopCatalog& apps) : proc_{proc}, apps_{apps} {}

    /// `uptime` is the time since boot.
    void beginSweep(Seconds uptime);

    struct Noted {
        KnownProcess& process; ///< stays in place until it is forgotten
        bool mustLearn;
    };
    Noted note(const ProcStat& stat);

    /// Reads what `note` did not find known; parents before their children. False when the process
    /// has gone, or another has taken its pid, in the meantime. `age` is the time since its start.
    bool learn(std::int32_t pid, KnownProcess& process, Seconds age);

    /// Forgets the processes that were not noted in this sweep. `noted` is how many were.
    void endSweep(std::size_t noted);

    std::size_t size() const { return processes_.size(); }

private:
    bool isStillThere(std::int32_t pid, const KnownProcess& process);
    std::string readExecutable(std::int32_t pid, const KnownProcess& process);
    void associateWithApp(std::int32_t pid, KnownProcess& process);

    const FolderReader& proc_;
    DesktopCatalog& apps_;
    std::shared_ptr<const DesktopIndex> index_;
    std::unordered_map<std::int32_t, KnownProcess> processes_;
    ReadBuffer buffer_;
    std::uint64_t sweep_ = 0;
    Seconds uptime_{};
};

} // namespace pacelet::Linux
