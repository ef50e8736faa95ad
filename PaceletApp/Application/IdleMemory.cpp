#include "PaceletApp/Application/IdleMemory.h"

#ifdef __APPLE__
#include <malloc/malloc.h>
#else
#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#endif

namespace pacelet {

#ifdef __APPLE__

void giveFreedMemoryBack() {}

void releaseIdleMemory() {
    // Of every zone, all that it can do without. Code counts with nobody there.
    malloc_zone_pressure_relief(nullptr, 0);
}

#else

namespace {

constexpr int largeBlock = 256 * 1024; // bytes

/// Code and constants of the program or of one library: what the loader maps for reading alone.
/// Nothing was ever written there, so its pages may go at any time.
int releaseConstants(dl_phdr_info* object, std::size_t /*size*/, void* /*unused*/) {
    const std::uintptr_t page = static_cast<std::uintptr_t>(::getpagesize()) - 1;
    for (int index = 0; index < object->dlpi_phnum; ++index) {
        const ElfW(Phdr)& segment = object->dlpi_phdr[index];
        if (segment.p_type == PT_LOAD && (segment.p_flags & PF_W) == 0) {
            const std::uintptr_t begin = (object->dlpi_addr + segment.p_vaddr) & ~page;
            const std::uintptr_t end =
                (object->dlpi_addr + segment.p_vaddr + segment.p_memsz + page) & ~page;
            // A page that stays does no harm. Its address is known in digits alone.
            // NOLINTNEXTLINE(performance-no-int-to-ptr)
            madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
        }
    }
    return 0;
}

} // namespace

void giveFreedMemoryBack() {
    // One for the UI thread, one for all others, which seldom work at the same time.
    mallopt(M_ARENA_MAX, 2);
    // Left alone, both grow with the largest block that was ever freed.
    mallopt(M_MMAP_THRESHOLD, largeBlock);
    mallopt(M_TRIM_THRESHOLD, largeBlock);
}

void releaseIdleMemory() {
    malloc_trim(0);
    dl_iterate_phdr(releaseConstants, nullptr);
}

#endif

} // namespace pacelet
