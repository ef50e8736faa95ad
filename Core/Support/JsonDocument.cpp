#include "Core/Support/JsonDocument.h"

#include "Core/Support/Text.h"

#include <charconv>
#include <cstdint>

namespace pacelet {

namespace {

constexpr std::string_view digits = "0123456789";

/// Takes `text` apart from its beginning on.
class NumberScan {
public:
    explicit NumberScan(std::string_view text)
        : rest_{text} {}

    /// Whether it is a number from end to end, by the grammar of JSON.
    bool isNumber() {
        take("-");
        return (take("0") || takeDigits()) && (!take(".") || takeDigits()) &&
               (!take("eE") || takeExponent()) && rest_.empty();
    }

private:
    bool takeExponent() {
        take("+-");
        return takeDigits();
    }

    bool takeDigits() {
        const bool stands = take(digits);
        while (take(digits)) {
        }
        return stands;
    }

    /// Takes the next character, if it is one of these.
    bool take(std::string_view any) {
        const bool stands = !rest_.empty() && any.find(rest_.front()) != std::string_view::npos;
        rest_.remove_prefix(stands ? 1 : 0);
        return stands;
    }

    std::string_view rest_;
};

std::string fitted(std::string_view number) {
    if (parseInteger<std::int64_t>(number) || parseInteger<std::uint64_t>(number)) {
        return std::string{number};
    }
    if (!parseFloat(number)) {
        return "false";
    }
    const bool isInteger = number.find_first_of(".eE") == std::string_view::npos;
    return std::string{number} + (isInteger ? "e0" : "");
}

/// Behind the string that begins `json`.
std::size_t stringLength(std::string_view json) {
    for (std::size_t at = 1; at < json.size(); ++at) {
        if (json[at] == '"') {
            return at + 1;
        }
        at += json[at] == '\\' ? 1 : 0;
    }
    return json.size();
}

bool beginsNumber(char character) {
    return character == '-' || digits.find(character) != std::string_view::npos;
}

/// All that may stand in a number, right or wrong, so that a wrong one stays in one piece.
std::size_t wordLength(std::string_view json) {
    const std::size_t end = json.find_first_of(" \t\r\n,:[]{}\"");
    return end == std::string_view::npos ? json.size() : end;
}

} // namespace

std::string fittedNumbers(std::string_view json) {
    std::string result;
    result.reserve(json.size() + 16);
    while (!json.empty()) {
        std::size_t length = 1;
        if (json.front() == '"') {
            length = stringLength(json);
            result += json.substr(0, length);
        } else if (beginsNumber(json.front())) {
            length = wordLength(json);
            const std::string_view word = json.substr(0, length);
            result += NumberScan{word}.isNumber() ? fitted(word) : std::string{word};
        } else {
            result += json.front();
        }
        json.remove_prefix(length);
    }
    return result;
}

simdjson::simdjson_result<simdjson::dom::element> parseJson(simdjson::dom::parser& parser,
                                                            std::string_view json) {
    json.remove_prefix(json.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
    const auto document = parser.parse(json.data(), json.size());
    if (document.error() != simdjson::NUMBER_ERROR) {
        return document;
    }
    const std::string fitting = fittedNumbers(json);
    return parser.parse(fitting.data(), fitting.size());
}

} // namespace pacelet
