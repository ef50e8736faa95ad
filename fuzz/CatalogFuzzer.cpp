#include "Core/Knowledge/CatalogFile.h"

#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        pacelet::CatalogFile::decode({reinterpret_cast<const char*>(data), size});
    } catch (const pacelet::CatalogError&) {
        return 0;
    }
    return 0;
}
