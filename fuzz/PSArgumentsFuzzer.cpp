#include "Core/Browser/TabCleanup.h"
#include "Core/Support/Precondition.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace pacelet;

/// Sums up any process listing: no line may cost more than itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const ExtensionUsage usage = TabCleanup::extensions(text, "/A.app");
    precondition(usage.count <= std::count(text.begin(), text.end(), '\n') + 1,
                 "more processes than lines");
    precondition(usage.memoryBytes % 1024 == 0, "a part of a kilobyte");
    return 0;
}
