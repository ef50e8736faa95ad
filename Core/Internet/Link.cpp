#include "Core/Internet/Link.h"

#include "Core/Support/EnumTable.h"

namespace pacelet {

namespace {

struct BandRow {
    WiFiBand value;
    std::string_view label;
};
constexpr std::array<BandRow, 4> bands{{
    {WiFiBand::ghz2_4, "2.4 GHz"},
    {WiFiBand::ghz5, "5 GHz"},
    {WiFiBand::ghz6, "6 GHz"},
    {WiFiBand::unknown, "Unknown band"},
}};

struct QualityRow {
    SignalQuality value;
    std::string_view label;
};
constexpr std::array<QualityRow, 4> qualities{{
    {SignalQuality::poor, "Poor"},
    {SignalQuality::fair, "Fair"},
    {SignalQuality::good, "Good"},
    {SignalQuality::excellent, "Excellent"},
}};

} // namespace

std::string_view label(WiFiBand band) {
    return rowOf(bands, band).label;
}

SignalQuality signalQuality(std::int64_t rssi) {
    if (rssi >= -60) {
        return SignalQuality::excellent;
    }
    if (rssi >= -70) {
        return SignalQuality::good;
    }
    return rssi >= -80 ? SignalQuality::fair : SignalQuality::poor;
}

std::string_view label(SignalQuality quality) {
    return rowOf(qualities, quality).label;
}

} // namespace pacelet
