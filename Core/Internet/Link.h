#pragma once

#include <cstdint>
#include <string_view>

namespace pacelet {

/// What carries the traffic to the internet.
enum class LinkType { wifi, ethernet, other, offline };

enum class WiFiBand { ghz2_4, ghz5, ghz6, unknown };

std::string_view label(WiFiBand band);

/// How good a radio signal is, in rising order.
enum class SignalQuality { poor = 0, fair = 1, good = 2, excellent = 3 };

/// The quality of a signal of `rssi` dBm: excellent from -60 up, good from -70, fair from -80.
SignalQuality signalQuality(std::int64_t rssi);

std::string_view label(SignalQuality quality);

/// One reading of the radio link.
struct WiFiLink {
    std::int64_t rssi = 0;       ///< signal strength in dBm
    std::int64_t noise = 0;      ///< noise level in dBm
    double transmitRateMbps = 0; ///< megabits per second; not finite when unknown
    WiFiBand band = WiFiBand::unknown;

    SignalQuality quality() const { return signalQuality(rssi); }

    bool operator==(const WiFiLink&) const = default;
};

} // namespace pacelet
