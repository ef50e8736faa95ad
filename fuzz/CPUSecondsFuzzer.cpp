#include "Core/Sampling/PSParser.h"

#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pacelet::PSParser::cpuSeconds({reinterpret_cast<const char*>(data), size});
    return 0;
}
