#include "Hosts/Linux/Browser/BridgeMessages.h"
#include "Hosts/Linux/Browser/BrowserProfiles.h"

#include <algorithm>
#include <cstdint>

using namespace pacelet::Linux;

namespace {

bool isPlain(const std::string& text) {
    return std::none_of(text.begin(), text.end(), [](char character) {
        return static_cast<unsigned char>(character) < 0x20;
    });
}

} // namespace

/// Whatever a browser answers, ids are such as it may have, and texts hold no separators.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view json{reinterpret_cast<const char*>(data), size};
    BrowserProfiles::namesIn(json);
    const auto reply = BridgeMessages::parse(json);
    if (!reply) {
        return 0;
    }
    for (const BridgeMessages::Window& window : reply->windows) {
        for (const BridgeMessages::Tab& tab : window.tabs) {
            if (window.id <= 0 || tab.id <= 0 || !isPlain(tab.title) || !isPlain(tab.url)) {
                __builtin_trap();
            }
        }
    }
    return 0;
}
