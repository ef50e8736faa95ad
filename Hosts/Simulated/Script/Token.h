#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Simulated::OSAScript {

/// A stretch of the script, in bytes.
struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
};

enum class TokenKind { word, text, integer, symbol, event, lineEnd, end };

struct Token {
    TokenKind kind = TokenKind::end;
    std::string text; ///< of a text, with its escapes resolved; of an event, what the quotes hold
    Range range;
};

/// Why a script does not compile, or where it stopped.
class ScriptError : public std::runtime_error {
public:
    ScriptError(std::int32_t number, const std::string& message, Range range = {},
                bool syntax = false)
        : std::runtime_error{message}, number_{number}, range_{range}, syntax_{syntax} {}

    std::int32_t number() const { return number_; }
    Range range() const { return range_; }
    bool isSyntax() const { return syntax_; }

private:
    std::int32_t number_;
    Range range_;
    bool syntax_;
};

// The system's own error numbers.
inline constexpr std::int32_t userCancelled = -128;
inline constexpr std::int32_t notRunning = -600;
inline constexpr std::int32_t notUnderstood = -1708;
inline constexpr std::int32_t invalidIndex = -1719;
inline constexpr std::int32_t noSuchObject = -1728;
inline constexpr std::int32_t notAuthorized = -1743;
inline constexpr std::int32_t syntaxError = -2741;
inline constexpr std::int32_t unknownCharacter = -2740;
inline constexpr std::int32_t undefinedVariable = -2753;

/// Cuts the script into tokens; the last one is `end`. Throws `ScriptError`.
std::vector<Token> tokenize(std::string_view script);

} // namespace pacelet::Simulated::OSAScript
