#pragma once

#include <cstdint>
#include <string>

/// The one place where sizes and percentages become text. Decimal point, no grouping, never "-0".
namespace pacelet::Format {

/// A size of memory in base 1024 and the largest fitting unit of KB, MB, GB and TB: no decimals for
/// KB, at most 1 for MB and 2 for GB and TB, trailing zeros dropped, halves away from zero.
std::string bytes(std::int64_t count);

/// A whole number, halves away from zero, and "%". `value` must be finite and fit 64 bits.
std::string percent(double value);

/// A size of a disk in decimal GB or TB, as a whole number.
std::string storage(std::int64_t count);

} // namespace pacelet::Format
