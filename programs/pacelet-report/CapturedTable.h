#pragma once

#include "Core/Platform/ProcessSample.h"

#include <string>
#include <string_view>
#include <vector>

namespace pacelet::report {

/// A process table as somebody captured it: the output of `ps` with the columns that the program
/// itself asks for, of `ps aux`, of `ps -ef`, or of any `ps` whose header names its columns.
struct CapturedTable {
    std::vector<ProcessSample> processes; ///< in the order of the lines
    bool tellsCPU = false;                ///< whether any process has a figure of CPU use
    bool isOfLinux = false;               ///< whether anything but a Mac's launchd came first
    bool tellsMemory = false;             ///< whether any has a size; all are 0 otherwise

    /// `text` is UTF-8. A line that does not read is skipped, as is one with a figure that no
    /// process can have. Control characters become question marks.
    static CapturedTable parse(std::string_view text);
};

/// The program at the head of a command line, whose words nothing but blanks divides: its path,
/// with the blanks that folders of a Mac have in their names, or its bare name. Threads of the
/// kernel stand in brackets, and are named as the Linux host names them.
std::string programOf(std::string_view commandLine);

} // namespace pacelet::report
