#include "Hosts/Linux/Desktop/IconTheme.h"
#include "Hosts/Linux/User/AutostartEntry.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    for (const Linux::IconFolder& folder : Linux::parseIconTheme(text).folders) {
        if (folder.smallest < 1 || folder.smallest > folder.largest || folder.distance(48) < 0) {
            std::abort();
        }
    }
    Linux::autostartStatus(text, "/usr/bin/pacelet");
    // Whatever the program's path is, its own entry starts it.
    const bool isPath = text.starts_with('/') && text.find('\0') == std::string_view::npos;
    if (isPath &&
        Linux::autostartStatus(Linux::autostartText(text), text) != LoginItemStatus::enabled) {
        std::abort();
    }
    return 0;
}
