#include "Core/Support/Precondition.h"
#include "Core/Usage/MacInfo.h"

#include <string_view>

// Whatever the report, Apple silicon is named as such.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const auto info = MacInfo::parse(text, 1);
    precondition(!info || !info->isAppleSilicon || info->chip.starts_with("Apple"),
                 "a foreign chip counts as Apple silicon");
    MacInfo::parseSize(text);
    return 0;
}
