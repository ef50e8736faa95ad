#include "Core/Internet/SpeedResult.h"

#include "Core/Support/Precondition.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const auto result = pacelet::SpeedResult::fromJson(text);
    if (result) {
        const auto again = pacelet::SpeedResult::fromJson(result->toJson());
        pacelet::precondition(again && again->downloadMbps == result->downloadMbps &&
                                  again->responsivenessRPM == result->responsivenessRPM &&
                                  again->baseRTTms == result->baseRTTms,
                              "a stored result does not read back");
    }
    return 0;
}
