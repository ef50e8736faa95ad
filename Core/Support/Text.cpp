#include "Core/Support/Text.h"

#include <cmath>
#include <cstdint>
#include <simdjson.h>
#ifdef __APPLE__
#include <xlocale.h>
#endif

namespace pacelet {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// How one byte may begin a sequence: how many bytes follow it, and the range of the first of them
/// (narrower than 80 to BF where longer forms, surrogates and code points past 10FFFF are shut
/// out).
struct Lead {
    int followers;
    unsigned char low;
    unsigned char high;
};

Lead leadOf(unsigned char byte) {
    if (byte >= 0xC2 && byte <= 0xDF) {
        return {1, 0x80, 0xBF};
    }
    if (byte >= 0xE0 && byte <= 0xEF) {
        const auto low = static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80);
        const auto high = static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF);
        return {2, low, high};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        const auto low = static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80);
        const auto high = static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF);
        return {3, low, high};
    }
    return {0, 0, 0};
}

/// The length of the sequence at the start of `text`, and whether it is whole and valid. An invalid
/// one counts the bytes that were right so far, at least one.
struct Sequence {
    std::size_t length;
    bool valid;
};

Sequence firstSequence(std::string_view text) {
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    if (byteAt(0) < 0x80) {
        return {1, true};
    }
    const Lead lead = leadOf(byteAt(0));
    std::size_t length = 1;
    for (int follower = 0; follower < lead.followers; ++follower, ++length) {
        const unsigned char low = follower == 0 ? lead.low : 0x80;
        const unsigned char high = follower == 0 ? lead.high : 0xBF;
        if (length == text.size() || byteAt(length) < low || byteAt(length) > high) {
            return {length, false};
        }
    }
    return {length, lead.followers > 0};
}

void appendUTF8(std::string& text, std::uint32_t codePoint) {
    const auto append = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (codePoint < 0x80) {
        append(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        append(0xC0 | codePoint >> 6);
    } else if (codePoint < 0x10000) {
        append(0xE0 | codePoint >> 12);
        append(0x80 | (codePoint >> 6 & 0x3F));
    } else {
        append(0xF0 | codePoint >> 18);
        append(0x80 | (codePoint >> 12 & 0x3F));
        append(0x80 | (codePoint >> 6 & 0x3F));
    }
    append(0x80 | (codePoint & 0x3F));
}

std::string utf8OfUTF16(std::string_view bytes, bool bigEndian) {
    const auto unitAt = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<std::uint32_t>(bigEndian ? first << 8 | second : second << 8 | first);
    };
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const std::uint32_t unit = unitAt(at);
        const bool isSurrogate = unit >= 0xD800 && unit < 0xE000;
        const std::uint32_t next =
            unit < 0xDC00 && isSurrogate && at + 3 < bytes.size() ? unitAt(at + 2) : 0;
        if (!isSurrogate) {
            appendUTF8(text, unit);
        } else if (next >= 0xDC00 && next < 0xE000) {
            appendUTF8(text, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            at += 2;
        } else {
            text += replacement;
        }
    }
    return bytes.size() % 2 == 0 ? text : text.append(replacement);
}

} // namespace

std::vector<std::string_view> splitDroppingEmpty(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (const std::string_view piece : splitKeepingEmpty(text, separator)) {
        if (!piece.empty()) {
            pieces.push_back(piece);
        }
    }
    return pieces;
}

std::vector<std::string_view> splitKeepingEmpty(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (;;) {
        const std::size_t end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return pieces;
        }
        text.remove_prefix(end + 1);
    }
}

std::string_view trimmed(std::string_view text) {
    return trimmed(text, " \t\n\v\f\r");
}

std::string_view trimmed(std::string_view text, std::string_view characters) {
    const std::size_t first = text.find_first_not_of(characters);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

std::string asciiLowercased(std::string_view text) {
    std::string lower{text};
    for (char& character : lower) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return lower;
}

std::string_view lastPathComponent(std::string_view path) {
    const std::size_t last = path.find_last_not_of('/');
    if (last == std::string_view::npos) {
        return path.substr(0, 1);
    }
    path = path.substr(0, last + 1);
    return path.substr(path.rfind('/') + 1);
}

std::string_view withoutExtension(std::string_view name) {
    const std::string_view extension = pathExtension(name);
    return extension.empty() ? name : name.substr(0, name.size() - extension.size() - 1);
}

std::string_view pathExtension(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) {
        return {};
    }
    return name.substr(dot + 1);
}

std::string repairedUTF8(std::string text) {
    if (simdjson::validate_utf8(text.data(), text.size())) {
        return text;
    }
    std::string repaired;
    repaired.reserve(text.size() + text.size() / 8);
    std::string_view rest = text;
    while (!rest.empty()) {
        const Sequence sequence = firstSequence(rest);
        repaired += sequence.valid ? rest.substr(0, sequence.length) : replacement;
        rest.remove_prefix(sequence.length);
    }
    return repaired;
}

std::string plainText(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byteAt = [&](std::size_t place) {
            return place < text.size() ? static_cast<unsigned char>(text[place]) : 0;
        };
        const int byte = byteAt(at);
        const int next = byteAt(at + 1);
        if (byte == '\r' && (next == '\n' || at + 1 == text.size())) {
            continue;
        }
        // The second set of control characters takes two bytes in UTF-8.
        const bool isLateControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        const bool isControl = byte < 0x20 && byte != '\n' && byte != '\t';
        plain += isControl || isLateControl || byte == 0x7F ? '?' : text[at];
        at += isLateControl ? 1 : 0;
    }
    return plain;
}

std::string decodedText(std::string bytes) {
    if (bytes.starts_with(byteOrderMark)) {
        return bytes.substr(byteOrderMark.size());
    }
    const auto byteAt = [&](std::size_t index) -> unsigned {
        return static_cast<unsigned char>(bytes[index]);
    };
    if (bytes.size() < 2 || (byteAt(0) == 0) == (byteAt(1) == 0)) {
        const bool isMarked = bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE");
        return isMarked ? utf8OfUTF16(std::string_view{bytes}.substr(2), byteAt(0) == 0xFE) : bytes;
    }
    return utf8OfUTF16(bytes, byteAt(0) == 0);
}

namespace {

/// Reads the whole text as a float in the C locale, without a plus sign; "inf" may be one.
bool readsWhole(std::string_view text, double& value) {
#ifdef __cpp_lib_to_chars
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc{} && end == text.data() + text.size();
#else
    // A library that reads integers only. The C function takes more forms than we do.
    if (text.empty() || text.front() == '+' ||
        text.find_first_not_of("0123456789.eE+-") != std::string_view::npos) {
        return false;
    }
    static const locale_t plain = ::newlocale(LC_ALL_MASK, "C", nullptr);
    const std::string copy{text};
    char* end = nullptr;
    value = ::strtod_l(copy.c_str(), &end, plain);
    return end == copy.c_str() + copy.size();
#endif
}

} // namespace

std::optional<double> parseFloat(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    double value = 0;
    if (!readsWhole(text, value) || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

} // namespace pacelet
