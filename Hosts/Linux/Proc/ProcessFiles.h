#pragma once

#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/Proc/FolderReader.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace pacelet::Linux {

/// What one look at a process gives.
struct ProcessGlance {
    std::uint32_t uid = 0;
    std::string_view stat; ///< text of its `stat` file, in the buffer that was handed in
};

/// A process's folder and its `stat` file, held open from one look to the next: reading them again
/// costs less than half of finding them by their paths. They belong to the process, not to its
/// number: when it has ended they read as nothing, whoever has the number now.
class ProcessFiles {
public:
    /// Looks through the held files, and where that does not do by the paths below `/proc`.
    /// `mayHold` tells whether the files may stay open afterwards. Nothing when there is no such
    /// process.
    std::optional<ProcessGlance> look(const FolderReader& proc, std::int32_t pid, bool mayHold,
                                      ReadBuffer& buffer);

private:
    std::optional<ProcessGlance> read(ReadBuffer& buffer) const;

    Descriptor folder_;
    Descriptor stat_;
};

/// How many processes may be held open, so that most of what this program may open stays free.
std::size_t holdableProcesses();

} // namespace pacelet::Linux
