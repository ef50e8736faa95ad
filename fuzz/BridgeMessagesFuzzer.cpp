#include "Core/Support/Text.h"
#include "Hosts/Linux/Browser/BridgeMessages.h"
#include "Hosts/Linux/Browser/BrowserProfiles.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

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
    // The profiles' names as windows show them are as many as they are, and no two alike.
    std::vector<BrowserProfiles::Profile> profiles;
    for (const auto& [folder, name] : BrowserProfiles::namesIn(json)) {
        profiles.push_back({name, false});
    }
    const auto shown = BrowserProfiles::shownNames(profiles);
    if (std::set(shown.begin(), shown.end()).size() != profiles.size()) {
        __builtin_trap();
    }
    BrowserProfiles::shownNames({{std::string{json}, true}});
    if (BrowserProfiles::userDataFolder(json, "/").front() != '/') {
        __builtin_trap();
    }
    // A request is one line, whatever it tells.
    const std::string text = pacelet::repairedUTF8(std::string{json});
    if (!isPlain(BridgeMessages::write(1, {"open", 2, 3, text, text}))) {
        __builtin_trap();
    }
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
