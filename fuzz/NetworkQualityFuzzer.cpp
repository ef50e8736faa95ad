#include "Core/Internet/SpeedTest.h"

#include "Core/Support/Precondition.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    try {
        const pacelet::SpeedResult result = pacelet::SpeedTest::parse(text, {});
        pacelet::precondition(std::isfinite(result.downloadMbps) &&
                                  std::isfinite(result.uploadMbps),
                              "a speed that cannot be shown was read");
    } catch (const pacelet::SpeedTestError&) {
        // The answer to everything that is no summary.
    }
    return 0;
}
