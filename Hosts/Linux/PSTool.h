#pragma once

#include "Core/Platform/Clock.h"
#include "Core/Platform/ShellOutput.h"
#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Knowledge/LocalKnowledge.h"
#include "Hosts/Linux/Proc/AppProcess.h"
#include "Hosts/Linux/Proc/LiveProcesses.h"
#include "Hosts/Linux/Proc/UserNames.h"

#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// Answers the two command lines of `ps` in the Mac's format, out of `/proc`. Remembers what does
/// not change from one call to the next. Safe from any thread; calls at a time wait for each other.
class PSTool {
public:
    /// `clock` counts from boot; it must outlive this object.
    PSTool(const std::string& procFolder, DesktopPlaces places, Clock& clock);

    /// Status 1 and a sentence on standard error for command lines that it does not know, and when
    /// there is no process table to read.
    Shell::Output run(const std::vector<std::string>& arguments);

    /// The processes of the desktop's applications that belong to `uid`, from the very same table,
    /// so that whoever acts on one sees what the listing shows.
    std::vector<AppProcess> appProcesses(std::uint32_t uid);

    /// What is known of these processes since the last listing; nothing for one that was not there,
    /// or runs another program now.
    std::vector<std::optional<ProcessOrigin>> origins(std::span<const ProgramQuestion> questions);

    /// The counters of a process's memory as of the last listing, or later.
    std::optional<CountedMemory> memory(std::int32_t pid);

private:
    std::string table();
    std::string commandLines();

    std::mutex mutex_;
    Clock& clock_;
    LiveProcesses processes_;
    UserNames users_;
    std::optional<Seconds> shownAt_; ///< uptime at the last table
    std::size_t usualSize_ = 0;      ///< of an answer, with some room
};

} // namespace pacelet::Linux
