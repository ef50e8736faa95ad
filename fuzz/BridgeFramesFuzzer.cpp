#include "Hosts/Linux/Browser/BridgeWire.h"

#include <algorithm>
#include <cstdint>
#include <vector>

using namespace pacelet::Linux;

namespace {

constexpr std::size_t longest = 64;

/// The messages in `bytes`, which come in pieces of this size.
std::vector<std::string> messages(std::string_view bytes, std::size_t piece) {
    std::vector<std::string> all;
    BridgeWire::FrameReader reader{longest};
    while (!bytes.empty()) {
        const std::size_t count = std::min(piece, bytes.size());
        const bool isFine = reader.feed(bytes.substr(0, count));
        bytes.remove_prefix(count);
        while (auto message = reader.next()) {
            all.push_back(*std::move(message));
        }
        if (!isFine) {
            break;
        }
    }
    return all;
}

} // namespace

/// However bytes are cut, they hold the same messages, none of them too long, and what is written
/// reads back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes{reinterpret_cast<const char*>(data), size};
    const auto whole = messages(bytes, 1);
    std::string written;
    for (const std::string& message : whole) {
        if (message.size() > longest) {
            __builtin_trap();
        }
        written += BridgeWire::frame(message);
    }
    if (bytes.substr(0, written.size()) != written || messages(written, 7) != whole ||
        messages(written, written.size() + 1) != whole) {
        __builtin_trap();
    }
    return 0;
}
