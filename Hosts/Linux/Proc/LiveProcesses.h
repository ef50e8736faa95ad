#pragma once

#include "Core/Support/Time.h"
#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Proc/FolderReader.h"
#include "Hosts/Linux/Proc/KnownProcesses.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// One process at one moment.
struct ProcessRow {
    std::int32_t pid = 0;
    std::int32_t ppid = 0;
    std::uint32_t uid = 0;
    /// CPU time since its start, in hundredths of a second, that of short-lived children included.
    std::int64_t cpuHundredths = 0;
    /// The same when it was last shown; nothing for one that was not.
    std::optional<std::int64_t> shownHundredths;
    std::int64_t residentKilobytes = 0;
    Seconds age{};                   ///< since its start
    KnownProcess* process = nullptr; ///< null when it went away while we looked
};

/// The process table out of `/proc`. For one thread at a time.
class LiveProcesses {
public:
    /// `procFolder` is "/proc" but in tests.
    LiveProcesses(const std::string& procFolder, DesktopPlaces places);

    bool isReadable() const { return proc_.isOpen(); }

    /// Reads all processes, in the order of their ids. `uptime` is the time since boot. The rows
    /// hold until the next call.
    const std::vector<ProcessRow>& read(Seconds uptime);

    /// Takes down that the rows of the last `read` are shown.
    void markShown();

    /// What is known of a process since the last `read`; null when it was not there.
    const KnownProcess* known(std::int32_t pid) const { return known_.find(pid); }

    /// The kernel's counters of a process's memory, which are read anew only when the last `read`
    /// tells that they may have changed. Nothing for what has gone or has no memory of its own.
    std::optional<CountedMemory> memory(std::int32_t pid);

    /// The command line of a process, NULs between its arguments, valid until the next call. Empty
    /// for a kernel thread and for what has ended; nothing when the process is not there any more.
    std::optional<std::string_view> commandLine(std::int32_t pid);

private:
    void readRow(std::int32_t pid, Seconds uptime);
    void learnPending();
    void countTime();

    FolderReader proc_;
    DesktopCatalog apps_;
    KnownProcesses known_;
    ReadBuffer listing_;
    ReadBuffer buffer_;
    std::vector<std::int32_t> pids_;
    std::vector<ProcessRow> rows_;

    struct Pending {
        std::uint64_t startTime;
        std::size_t row;
        KnownProcess* process;
    };
    std::vector<Pending> pending_; // rows whose process is not known yet
    std::size_t holdable_ = holdableProcesses();
    Seconds lastUptime_{};
    Seconds sinceLast_{}; ///< from the last `read` to this one; 0 in the first
    std::uint64_t ticksPerSecond_;
    std::int64_t kilobytesPerPage_;
    double processors_;
};

} // namespace pacelet::Linux
