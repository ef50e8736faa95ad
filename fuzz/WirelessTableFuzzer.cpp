#include "Hosts/Linux/Network/WirelessTable.h"

#include "Core/Support/Precondition.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    for (const pacelet::Linux::WirelessRow& row : pacelet::Linux::parseWirelessTable(text)) {
        pacelet::precondition(row.signalDBm <= 0 && row.noiseDBm <= 0 && row.signalDBm > -256,
                              "a figure that is no level in dBm was read");
    }
    return 0;
}
