#include "Hosts/Linux/Proc/ProcessFiles.h"

#include "Hosts/Linux/Proc/ProcPath.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace pacelet::Linux {

std::optional<ProcessGlance> ProcessFiles::look(const FolderReader& proc, std::int32_t pid,
                                                bool mayHold, ReadBuffer& buffer) {
    if (stat_) {
        if (const auto glance = mayHold ? read(buffer) : std::nullopt) {
            return glance;
        }
        *this = ProcessFiles{};
    }
    folder_ = proc.open(ProcPath{pid}.text(), O_PATH | O_DIRECTORY);
    stat_ = proc.open(ProcPath{pid, "stat"}.text(), O_RDONLY);
    auto glance = read(buffer);
    if (!mayHold || !glance) {
        *this = ProcessFiles{};
    }
    return glance;
}

std::optional<ProcessGlance> ProcessFiles::read(ReadBuffer& buffer) const {
    // The folder's owner: the files in it belong to root when the process guards itself. It is
    // asked first, since the folder answers even after the process has ended, and `stat` does not.
    struct stat facts {};
    if (::fstat(folder_.get(), &facts) != 0) {
        return std::nullopt;
    }
    const auto text = readWhole(stat_, buffer);
    return text ? std::optional{ProcessGlance{facts.st_uid, *text}} : std::nullopt;
}

std::size_t holdableProcesses() {
    // Two files each: together at most half of what may be open.
    constexpr rlim_t share = 4;
    constexpr rlim_t most = 8192;
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return 0;
    }
    return static_cast<std::size_t>(std::min(limit.rlim_cur / share, most));
}

} // namespace pacelet::Linux
