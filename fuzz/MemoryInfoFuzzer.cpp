#include "Hosts/Linux/Proc/MemoryInfo.h"
#include "Hosts/Linux/Proc/PressureStall.h"
#include "Hosts/Linux/Proc/ProcessMemory.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet::Linux;
    constexpr std::int64_t pageSize = 4096;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const MemoryInfo info = parseMemoryInfo(text);
    if (const auto split = memoryStatistics(info, pageSize, 0)) {
        const std::int64_t pages = std::int64_t{split->free_count} + split->internal_page_count +
                                   split->external_page_count + split->compressor_page_count +
                                   split->wire_count;
        if (pages > *info.total / pageSize) {
            std::abort();
        }
    }
    if (const auto swap = swapUsage(info, pageSize); swap && swap->xsu_used > swap->xsu_total) {
        std::abort();
    }
    for (const auto& memory : {parseStatusMemory(text), parseSharedOut(text)}) {
        if (memory && memory->total() < memory->anonymous) {
            std::abort();
        }
    }
    const auto level = pressureLevel(parsePressureStall(text), availableShare(info));
    return level && *level != 1 && *level != 2 && *level != 4 ? (std::abort(), 0) : 0;
}
