#include "Core/Support/JsonDocument.h"

#include "Core/Support/Text.h"

#include <charconv>
#include <cstdint>

namespace pacelet {

namespace {

/// Takes `text` apart from its beginning on.
class NumberScan {
public:
    explicit NumberScan(std::string_view text)
        : text_{text} {}

    /// Behind the number at the beginning, by the grammar of JSON; 0 when none stands there.
    std::size_t length() {
        take('-');
        const bool startsWithZero = take('0');
        if (!startsWithZero && !takeDigits()) {
            return 0;
        }
        if (take('.')) {
            isInteger_ = false;
            if (!takeDigits()) {
                return 0;
            }
        }
        if (take('e') || take('E')) {
            isInteger_ = false;
            if (!take('+')) {
                take('-');
            }
            if (!takeDigits()) {
                return 0;
            }
        }
        return at_;
    }

    bool isInteger() const { return isInteger_; }

private:
    bool take(char character) {
        const bool stands = at_ < text_.size() && text_[at_] == character;
        at_ += stands ? 1 : 0;
        return stands;
    }

    bool takeDigits() {
        const std::size_t first = at_;
        while (at_ < text_.size() && text_[at_] >= '0' && text_[at_] <= '9') {
            ++at_;
        }
        return at_ > first;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    bool isInteger_ = true;
};

std::string fitted(std::string_view number, bool isInteger) {
    if (parseInteger<std::int64_t>(number) || parseInteger<std::uint64_t>(number)) {
        return std::string{number};
    }
    if (!parseFloat(number)) {
        return "false";
    }
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
    return character == '-' || (character >= '0' && character <= '9');
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
            NumberScan number{word};
            const bool isWhole = number.length() == length;
            result += isWhole ? fitted(word, number.isInteger()) : std::string{word};
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
