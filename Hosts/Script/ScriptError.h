#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace pacelet::Script {

/// A stretch of the script, in bytes.
struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Why a script does not compile, or where it stopped.
class ScriptError : public std::runtime_error {
public:
    ScriptError(std::int32_t number, const std::string& message, Range range = {},
                bool syntax = false)
        : std::runtime_error{message},
          number_{number},
          range_{range},
          syntax_{syntax} {}

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
inline constexpr std::int32_t connectionInvalid = -609;
inline constexpr std::int32_t cannotCoerce = -1700;
inline constexpr std::int32_t notUnderstood = -1708;
inline constexpr std::int32_t timedOut = -1712;
inline constexpr std::int32_t invalidIndex = -1719;
inline constexpr std::int32_t noSuchObject = -1728;
inline constexpr std::int32_t notAuthorized = -1743;
inline constexpr std::int32_t syntaxError = -2741;
inline constexpr std::int32_t unknownCharacter = -2740;
inline constexpr std::int32_t undefinedVariable = -2753;

} // namespace pacelet::Script
