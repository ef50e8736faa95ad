#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// The pieces of `text` between separators, empty ones dropped. The views point into `text`.
std::vector<std::string_view> splitDroppingEmpty(std::string_view text, char separator);

/// The pieces of `text` between separators, empty ones kept; never an empty list.
std::vector<std::string_view> splitKeepingEmpty(std::string_view text, char separator);

/// Calls `visit(line)` for each line of `text` that is not empty, in order. No list is built.
template<typename Visitor>
void forEachLine(std::string_view text, Visitor&& visit) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        if (!line.empty()) {
            visit(line);
        }
        if (end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + 1);
    }
}

/// Cuts `line` into columns. Runs of blanks stand before and between all columns but the last one,
/// which is all that follows the one blank behind the column before it. False when a column is
/// missing or empty.
template<std::size_t count>
bool splitColumns(std::string_view line, std::array<std::string_view, count>& columns) {
    for (std::size_t column = 0; column + 1 < count; ++column) {
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        const std::size_t end = line.find(' ');
        if (end == std::string_view::npos) {
            return false;
        }
        columns[column] = line.substr(0, end);
        line.remove_prefix(end);
    }
    line.remove_prefix(1);
    columns[count - 1] = line;
    return !line.empty();
}

/// `text` without blanks, tabs and line breaks at both ends.
std::string_view trimmed(std::string_view text);

/// `text` without any of `characters` at both ends.
std::string_view trimmed(std::string_view text, std::string_view characters);

/// ASCII letters in lower case, everything else as it stands.
std::string asciiLowercased(std::string_view text);

/// What stands behind the last "/", trailing slashes ignored; the whole text without a slash; "/"
/// for a text of slashes only.
std::string_view lastPathComponent(std::string_view path);

/// `name` without its last extension: what begins at its last dot. A name that begins with its only
/// dot, or ends in its last one, has none.
std::string_view withoutExtension(std::string_view name);

/// What `withoutExtension` leaves out, the dot not included; empty when there is none.
std::string_view pathExtension(std::string_view name);

/// The byte order mark, as UTF-8 writes it.
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// The text of a file as UTF-8, without a byte order mark. UTF-16 is told by its mark, or by the
/// zero that stands in its first character where that is a plain one; halves of a character become
/// U+FFFD. Anything else is handed back as it stands.
std::string decodedText(std::string bytes);

/// UTF-8 with every invalid sequence replaced by U+FFFD, one for each longest prefix of a sequence
/// that might have become valid. Valid text is returned as it is.
std::string repairedUTF8(std::string text);

/// The text with lines that end in line feeds alone, and "?" for every control character else but
/// tabs: what a terminal may be shown.
std::string plainText(std::string_view text);

/// The whole text as a decimal integer: one optional sign, then digits only, within the range of T.
/// A minus sign before an unsigned type is accepted for zero alone.
template<std::integral T>
std::optional<T> parseInteger(std::string_view text) {
    if (text.size() > 1 && (text.front() == '+' || text.front() == '-')) {
        if (text[1] < '0' || text[1] > '9') {
            return std::nullopt;
        }
        if (text.front() == '+') {
            text.remove_prefix(1);
        } else if (std::unsigned_integral<T>) {
            return text.find_first_not_of('0', 1) == text.npos ? std::optional<T>{T{0}}
                                                               : std::nullopt;
        }
    }
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

/// The whole text as a finite float in the C locale: decimal digits with an optional sign, point
/// and exponent, and nothing around them.
std::optional<double> parseFloat(std::string_view text);

} // namespace pacelet
