#include "Hosts/Linux/User/Base64.h"

#include <cstdint>

namespace pacelet::Linux {

namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

std::string base64Encoded(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (; !bytes.empty(); bytes.remove_prefix(bytes.size() < 3 ? bytes.size() : 3)) {
        std::uint32_t group = 0;
        for (std::size_t at = 0; at < 3; ++at) {
            group = group << 8 | (at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U);
        }
        for (std::size_t at = 0; at < 4; ++at) {
            text += at <= bytes.size() ? alphabet[group >> (18 - 6 * at) & 63] : '=';
        }
    }
    return text;
}

std::optional<std::string> base64Decoded(std::string_view text) {
    if (text.size() % 4 != 0) {
        return std::nullopt;
    }
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    text.remove_suffix(padding);
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t held = 0;
    int bits = 0;
    for (const char character : text) {
        const std::size_t value = alphabet.find(character);
        if (value == std::string_view::npos) {
            return std::nullopt;
        }
        held = (held << 6 | static_cast<std::uint32_t>(value)) & 0xFFFF;
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes += static_cast<char>(held >> bits & 0xFF);
        }
    }
    // The bits beyond the last byte are 0 in what was written properly.
    const bool isWhole = (held & ((1U << bits) - 1)) == 0;
    return isWhole ? std::optional{std::move(bytes)} : std::nullopt;
}

} // namespace pacelet::Linux
