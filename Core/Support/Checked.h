#pragma once

#include "Core/Support/Precondition.h"

#include <cmath>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string_view>

namespace pacelet {

/// Arithmetic on the program's own values that must not wrap around: an overflow is a fault of ours
/// and stops the program with `what`, which names the value.
template<std::integral T>
constexpr T checkedAdd(T left, T right, std::string_view what) {
    T sum{};
    precondition(!__builtin_add_overflow(left, right, &sum), what);
    return sum;
}

template<std::integral T>
constexpr T checkedMultiply(T left, T right, std::string_view what) {
    T product{};
    precondition(!__builtin_mul_overflow(left, right, &product), what);
    return product;
}

/// `value` without its fraction; nothing when it is not finite or outside the range.
inline std::optional<std::int64_t> truncatedIfFits(double value) {
    // 2^63 is exact as a float, and the largest integer below it is not.
    constexpr double limit = 9223372036854775808.0;
    if (!(value >= -limit && value < limit)) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(value);
}

/// The same, but a value that is not finite, or outside the range, stops the program with
/// `what`.
inline std::int64_t checkedTruncate(double value, std::string_view what) {
    const std::optional<std::int64_t> whole = truncatedIfFits(value);
    precondition(whole.has_value(), what);
    return *whole;
}

/// `value` rounded to the nearest integer, halves away from zero; stops the program as above.
inline std::int64_t checkedRound(double value, std::string_view what) {
    return checkedTruncate(std::round(value), what);
}

} // namespace pacelet
