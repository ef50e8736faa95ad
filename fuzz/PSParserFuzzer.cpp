#include "Core/Sampling/PSParser.h"

#include <cstdlib>
#include <string_view>

/// Any text reads; only a resident size beyond 64 bits stops the program, so such lines are left
/// out.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    std::size_t digits = 0;
    for (const char character : text) {
        digits = character >= '0' && character <= '9' ? digits + 1 : 0;
        if (digits > 15) {
            return 0;
        }
    }
    for (const auto& sample : pacelet::PSParser::parse(text)) {
        if (sample.path.empty() || sample.name().size() > sample.path.size()) {
            std::abort();
        }
    }
    return 0;
}
