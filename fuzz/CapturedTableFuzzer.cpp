#include "Core/Support/Text.h"
#include "programs/pacelet-report/CapturedTable.h"

#include <cstdint>
#include <string>

using namespace pacelet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes{reinterpret_cast<const char*>(data), size};
    for (const ProcessSample& sample :
         report::CapturedTable::parse(repairedUTF8(decodedText(bytes))).processes) {
        // What the sums over a table rely on.
        if (sample.rssBytes < 0 || sample.rssBytes > std::int64_t{1} << 42 || sample.psCPU < 0 ||
            sample.cpuTime < 0) {
            __builtin_trap();
        }
    }
    return 0;
}
