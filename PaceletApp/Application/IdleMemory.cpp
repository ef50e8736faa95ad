#include "PaceletApp/Application/IdleMemory.h"

#include <QPixmapCache>

#include <malloc.h>
#include <sys/mman.h>

#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <string>

namespace pacelet {

namespace {

/// The code of a program or library, as the system lists it: "begin-end r-xp offset device inode
/// path". Code that was made at run time stands in a file, too, but in one without a place.
bool isCodeOfAFile(const std::string& mapping) {
    const std::size_t path = mapping.find(" /");
    return mapping.find(" r-xp ") != std::string::npos && path != std::string::npos &&
           mapping.compare(path, 8, " /memfd:") != 0;
}

/// Code is never written to, so its pages may go at any time. Data of the same files may not: the
/// loader has written addresses into it.
void releaseCode() {
    std::ifstream maps{"/proc/self/maps"};
    for (std::string line; std::getline(maps, line);) {
        std::uintptr_t begin = 0;
        std::uintptr_t end = 0;
        if (isCodeOfAFile(line) &&
            std::sscanf(line.c_str(), "%" SCNxPTR "-%" SCNxPTR, &begin, &end) == 2) {
            // A page that stays does no harm. Its address is known in digits alone.
            // NOLINTNEXTLINE(performance-no-int-to-ptr)
            madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
        }
    }
}

} // namespace

void releaseIdleMemory() {
    QPixmapCache::clear();
#ifdef __GLIBC__
    malloc_trim(0);
#endif
    releaseCode();
}

} // namespace pacelet
