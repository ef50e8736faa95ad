#include "Core/Internet/NetTop.h"

#include "Core/Support/Precondition.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    for (const pacelet::NetUsage& usage : pacelet::NetTop::parse(text)) {
        pacelet::precondition(usage.total() > 0 && std::isfinite(usage.total()),
                              "a rate that cannot be shown was read");
    }
    return 0;
}
