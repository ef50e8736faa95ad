#include "Core/Support/JsonWriter.h"

#include "Core/Support/Precondition.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace pacelet {

std::string shortestFloat(double value) {
    precondition(std::isfinite(value), "a float without a finite value cannot be written");
    if (value == 0) {
        return "0";
    }
    // Plain digits beyond 64 bits would be read as an integer that does not fit.
    constexpr double plainBelow = 9223372036854775808.0;
    std::array<char, 32> buffer{};
    char* const begin = buffer.data();
    char* const room = begin + buffer.size();
    const auto [end, error] =
        std::abs(value) < plainBelow
            ? std::to_chars(begin, room, value)
            : std::to_chars(begin, room, value, std::chars_format::scientific);
    precondition(error == std::errc{}, "a float outgrew its buffer");
    return {buffer.data(), end};
}

JsonWriter& JsonWriter::key(std::string_view name) {
    separate();
    quote(name);
    text_ += ':';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) {
    separate();
    quote(text);
    return *this;
}

JsonWriter& JsonWriter::value(double number) {
    separate();
    text_ += shortestFloat(number);
    return *this;
}

JsonWriter& JsonWriter::value(std::int64_t number) {
    separate();
    text_ += std::to_string(number);
    return *this;
}

JsonWriter& JsonWriter::value(bool truth) {
    separate();
    text_ += truth ? "true" : "false";
    return *this;
}

std::string JsonWriter::take() {
    needsComma_ = false;
    return std::exchange(text_, {});
}

JsonWriter& JsonWriter::open(char bracket) {
    separate();
    text_ += bracket;
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::close(char bracket) {
    text_ += bracket;
    needsComma_ = true;
    return *this;
}

void JsonWriter::separate() {
    if (needsComma_) {
        text_ += ',';
    }
    needsComma_ = true;
}

void JsonWriter::quote(std::string_view text) {
    constexpr std::string_view hex = "0123456789abcdef";
    text_ += '"';
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            text_ += '\\';
            text_ += character;
        } else if (character == '\n') {
            text_ += "\\n";
        } else if (character == '\t') {
            text_ += "\\t";
        } else if (code < 0x20) {
            text_ += "\\u00";
            text_ += hex[code >> 4];
            text_ += hex[code & 0xf];
        } else {
            text_ += character;
        }
    }
    text_ += '"';
}

} // namespace pacelet
