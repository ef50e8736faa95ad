#pragma once

#include "Core/Support/JsonDocument.h"
#include "Core/Support/Text.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Reading files of one JSON object a line.
namespace pacelet::JsonLines {

/// A line takes some hundred bytes. Longer ones than this are not worth the memory that parsing
/// them takes.
inline constexpr std::size_t longestLine = std::size_t{1} << 20;

/// The bytes behind the line must be there, as many as the parser may look beyond it.
inline simdjson::simdjson_result<simdjson::dom::element> parseLine(simdjson::dom::parser& parser,
                                                                   std::string_view line) {
    constexpr bool copy = false;
    const auto element = parser.parse(line.data(), line.size(), copy);
    return element.error() == simdjson::NUMBER_ERROR ? parseJson(parser, line) : element;
}

/// Calls `visit(object)` for each line of `text` that is a JSON object, in order. A text that is
/// not UTF-8 throughout has none. `text` gets some padding at its end, which the parser needs.
template<typename Visitor>
void forEachObject(std::string& text, Visitor&& visit) {
    if (!simdjson::validate_utf8(text.data(), text.size())) {
        return;
    }
    const std::size_t size = text.size();
    text.append(simdjson::SIMDJSON_PADDING, ' ');
    simdjson::dom::parser parser;
    forEachLine(std::string_view{text}.substr(0, size), [&](std::string_view line) {
        simdjson::dom::object object;
        if (line.size() <= longestLine &&
            parseLine(parser, line).get(object) == simdjson::SUCCESS) {
            visit(object);
        }
    });
}

} // namespace pacelet::JsonLines
