#pragma once

#include "Core/Support/Time.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

/// What one speed test measured.
struct SpeedResult {
    double downloadMbps = 0;                         ///< megabits per second
    double uploadMbps = 0;                           ///< megabits per second
    std::optional<std::int64_t> responsivenessRPM{}; ///< round trips per minute
    std::optional<double> baseRTTms{};               ///< idle round-trip time in milliseconds
    TimePoint measuredAt{};                          ///< when the test ended

    bool operator==(const SpeedResult&) const = default;

    /// One JSON object with the field names as keys. "measuredAt" is in seconds since 2001-01-01
    /// 00:00 UTC; absent fields are left out. The figures must be finite.
    std::string toJson() const;

    /// The result that `toJson` wrote; nothing unless every field has its type. An optional field
    /// may also be null, and an integer may be written as a float without a fraction.
    static std::optional<SpeedResult> fromJson(std::string_view json);
};

/// A speed as a whole number, halves away from zero, and " Mbps".
std::string megabits(double mbps);

} // namespace pacelet
