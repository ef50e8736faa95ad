#include "Hosts/Linux/User/Base64.h"
#include "Hosts/Linux/User/PreferencesFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet::Linux;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const PreferenceValues values = parsePreferences(text).values;
    if (parsePreferences(writePreferences(values)) != ParsedPreferences{values, true}) {
        std::abort();
    }
    if (base64Decoded(base64Encoded(text)) != text) {
        std::abort();
    }
    if (const auto bytes = base64Decoded(text); bytes && base64Encoded(*bytes) != text) {
        std::abort();
    }
    return 0;
}
