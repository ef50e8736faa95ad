#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace pacelet::Linux {

/// What we take from `/proc/<pid>/stat`. Times are in clock ticks.
struct ProcStat {
    std::int32_t pid = 0;
    std::string_view comm; ///< may hold anything, blanks, brackets and line feeds included
    char state = '?';
    std::int32_t ppid = 0;
    std::int32_t terminal = 0; ///< device of the controlling terminal; 0 without one
    bool isKernelThread = false;
    std::uint64_t minorFaults = 0;
    std::uint64_t majorFaults = 0;
    std::uint64_t userTime = 0;
    std::uint64_t systemTime = 0;
    std::uint64_t reapedUserTime = 0; ///< of all children that it has waited for
    std::uint64_t reapedSystemTime = 0;
    std::uint64_t startTime = 0; ///< since boot; together with `pid` it names a process for good
    std::int64_t residentPages = 0;
    /// Where the program's code and first stack lie: another program, or the same one started again
    /// in the same process, lies elsewhere. 0 or 1 where we may not know.
    std::uint64_t startCode = 0;
    std::uint64_t startStack = 0;

    bool hasEnded() const { return state == 'Z' || state == 'X' || state == 'x'; }

    bool operator==(const ProcStat&) const = default;
};

/// Reads the line; nothing when it is no such line. `comm` points into `text`.
std::optional<ProcStat> parseProcStat(std::string_view text);

} // namespace pacelet::Linux
