#include "Core/Usage/OwnersOnly.h"

#include <sys/stat.h>

namespace pacelet::OwnersOnly {

void keep(const std::string& path) {
    struct stat facts {};
    // Nothing is asked of the file but its facts, so that a pipe of that name holds up nobody.
    if (::lstat(path.c_str(), &facts) != 0 ||
        (!S_ISREG(facts.st_mode) && !S_ISDIR(facts.st_mode))) {
        return;
    }
    constexpr mode_t others = S_IRWXG | S_IRWXO;
    if ((facts.st_mode & others) != 0) {
        // One that is somebody else's refuses.
        [[maybe_unused]] const int refused = ::chmod(path.c_str(), facts.st_mode & ~others & 07777);
    }
}

} // namespace pacelet::OwnersOnly
