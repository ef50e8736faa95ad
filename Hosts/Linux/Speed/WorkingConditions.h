#pragma once

#include "Core/Support/Time.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

/// The arithmetic of the IETF's "Responsiveness under Working Conditions"
/// (draft-ietf-ippm-responsiveness).
namespace pacelet::Linux {

/// How many intervals make a moving average, and how many of those must agree.
inline constexpr std::size_t intervalsThatCount = 4;

/// What got through in some time.
struct Throughput {
    std::int64_t bytes = 0;
    Seconds duration{};

    void add(std::int64_t moreBytes, Seconds moreTime);
    double bitsPerSecond() const; ///< 0 in no time
};

/// What got through, interval by interval.
class Goodput {
public:
    void add(std::int64_t bytes, Seconds duration);

    /// The last four intervals, or the last four moving averages over as many, differ by less than
    /// 5% (their standard deviation of their mean): more connections would get no more through.
    bool isStable() const;

    /// Over the last four intervals, or as many as there are; 0 for none.
    double bitsPerSecond() const;

private:
    std::deque<Throughput> intervals_; ///< the last four
    std::deque<double> rates_;         ///< of these, in bits per second
    std::deque<double> averages_;      ///< the last four moving averages of the rates
};

/// Round trips of each kind.
struct RoundTrips {
    std::vector<Seconds> connects{};   ///< TCP handshakes of separate connections
    std::vector<Seconds> handshakes{}; ///< TLS 1.3 handshakes, which take one round trip
    std::vector<Seconds> requests{};   ///< HTTP requests on those connections
    std::vector<Seconds> loaded{};     ///< HTTP requests on connections that carry the load

    void append(const RoundTrips& others);
};

/// The mean of all but the highest 5%; nothing without any.
std::optional<Seconds> trimmedMean(std::vector<Seconds> durations);

/// The middle one; of an even number the lower one. Nothing without any.
std::optional<Seconds> lowerMedian(std::vector<Seconds> durations);

/// The mean of what separate and loaded connections say, or what one of both says. Nothing without
/// any round trip.
std::optional<double> roundTripsPerMinute(const RoundTrips& trips);

/// Both directions in one figure: that of the mean round trip. Where only one is known, that one.
std::optional<double> combinedPerMinute(std::optional<double> one, std::optional<double> other);

} // namespace pacelet::Linux
