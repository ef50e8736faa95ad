#include "Hosts/Linux/Speed/WorkingConditions.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

namespace pacelet::Linux {

namespace {

constexpr double tolerance = 0.05;
constexpr double trimmedShare = 0.05;
constexpr double secondsPerMinute = 60.0;

template<typename Value>
void pushToLastFour(std::deque<Value>& values, Value value) {
    values.push_back(value);
    if (values.size() > intervalsThatCount) {
        values.pop_front();
    }
}

Seconds meanOf(const std::vector<Seconds>& durations) {
    return std::accumulate(durations.begin(), durations.end(), Seconds{}) /
           static_cast<double>(durations.size());
}

bool areStable(const std::deque<double>& values) {
    if (values.size() < intervalsThatCount) {
        return false;
    }
    const auto count = static_cast<double>(values.size());
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    double squares = 0;
    for (const double value : values) {
        squares += (value - mean) * (value - mean);
    }
    return std::sqrt(squares / count) < tolerance * mean;
}

void appendTo(std::vector<Seconds>& target, const std::vector<Seconds>& others) {
    target.insert(target.end(), others.begin(), others.end());
}

} // namespace

void Throughput::add(std::int64_t moreBytes, Seconds moreTime) {
    bytes += moreBytes;
    duration += moreTime;
}

double Throughput::bitsPerSecond() const {
    constexpr double bitsPerByte = 8;
    return duration > Seconds{} ? static_cast<double>(bytes) * bitsPerByte / duration.count() : 0;
}

void Goodput::add(std::int64_t bytes, Seconds duration) {
    const Throughput added{bytes, duration};
    pushToLastFour(intervals_, added);
    pushToLastFour(rates_, added.bitsPerSecond());
    pushToLastFour(averages_, bitsPerSecond());
}

bool Goodput::isStable() const {
    return areStable(rates_) || areStable(averages_);
}

double Goodput::bitsPerSecond() const {
    Throughput sum;
    for (const Throughput& each : intervals_) {
        sum.add(each.bytes, each.duration);
    }
    return sum.bitsPerSecond();
}

void RoundTrips::append(const RoundTrips& others) {
    appendTo(connects, others.connects);
    appendTo(handshakes, others.handshakes);
    appendTo(requests, others.requests);
    appendTo(loaded, others.loaded);
}

std::optional<Seconds> trimmedMean(std::vector<Seconds> durations) {
    if (durations.empty()) {
        return std::nullopt;
    }
    std::ranges::sort(durations);
    const auto highest = std::floor(trimmedShare * static_cast<double>(durations.size()));
    durations.resize(durations.size() - static_cast<std::size_t>(highest));
    return meanOf(durations);
}

std::optional<Seconds> lowerMedian(std::vector<Seconds> durations) {
    if (durations.empty()) {
        return std::nullopt;
    }
    const auto middle =
        std::next(durations.begin(), static_cast<std::ptrdiff_t>((durations.size() - 1) / 2));
    std::ranges::nth_element(durations, middle);
    return *middle;
}

std::optional<double> roundTripsPerMinute(const RoundTrips& trips) {
    std::vector<Seconds> separate;
    for (const auto* kind : {&trips.connects, &trips.handshakes, &trips.requests}) {
        if (const auto mean = trimmedMean(*kind)) {
            separate.push_back(*mean);
        }
    }
    std::vector<double> figures;
    if (!separate.empty()) {
        figures.push_back(secondsPerMinute / meanOf(separate).count());
    }
    if (const auto mean = trimmedMean(trips.loaded)) {
        figures.push_back(secondsPerMinute / mean->count());
    }
    if (figures.empty()) {
        return std::nullopt;
    }
    return std::accumulate(figures.begin(), figures.end(), 0.0) /
           static_cast<double>(figures.size());
}

std::optional<double> combinedPerMinute(std::optional<double> one, std::optional<double> other) {
    if (!one || !other) {
        return one ? one : other;
    }
    return *one + *other > 0 ? 2 * *one * *other / (*one + *other) : 0;
}

} // namespace pacelet::Linux
