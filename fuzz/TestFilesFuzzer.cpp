#include "Core/Support/Precondition.h"
#include "Hosts/Linux/Speed/TestFiles.h"

#include <cstddef>
#include <cstdint>

/// Whatever a server answers, a test either has all its addresses or does not begin.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet;
    const std::string_view json{reinterpret_cast<const char*>(data), size};
    if (const auto files = Linux::parseTestFiles(json)) {
        precondition(!files->small.empty() && !files->large.empty() && !files->upload.empty(),
                     "a speed test lacks an address");
    }
    return 0;
}
