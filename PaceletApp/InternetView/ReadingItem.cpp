#include "PaceletApp/InternetView/ReadingItem.h"

#include "Core/Internet/Responsiveness.h"
#include "Core/Support/EnumTable.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"

#include <array>
#include <cmath>
#include <fmt/format.h>
#include <string_view>

namespace pacelet {

namespace {

struct QualityRow {
    SignalQuality value;
    Tone tone;
};
constexpr std::array<QualityRow, 4> qualities{{
    {SignalQuality::poor, Tone::Red},
    {SignalQuality::fair, Tone::Amber},
    {SignalQuality::good, Tone::Green},
    {SignalQuality::excellent, Tone::Green},
}};

ReadingItem reading(std::string_view label, std::string_view value, Tone tone = Tone::None) {
    return {qtText(label), qtText(value), tone};
}

} // namespace

Tone toneOf(SignalQuality quality) {
    return rowOf(qualities, quality).tone;
}

std::vector<ReadingItem> readings(const WiFiLink& wifi) {
    std::vector<ReadingItem> items{
        reading("Signal", fmt::format("{} ({} dBm)", label(wifi.quality()), wifi.rssi),
                toneOf(wifi.quality())),
        reading("Band", label(wifi.band)),
    };
    if (std::isfinite(wifi.transmitRateMbps)) {
        items.push_back(reading("Wi-Fi link", sentence("{} between your Mac and router",
                                                       megabits(wifi.transmitRateMbps))));
    }
    return items;
}

std::vector<ReadingItem> readings(const SpeedResult& speed) {
    std::vector<ReadingItem> items{
        reading("Download", megabits(speed.downloadMbps)),
        reading("Upload", megabits(speed.uploadMbps)),
    };
    if (speed.responsivenessRPM) {
        const std::int64_t rpm = *speed.responsivenessRPM;
        items.push_back(
            reading("Responsiveness", fmt::format("{} ({} RPM)", label(responsiveness(rpm)), rpm)));
    }
    if (speed.baseRTTms) {
        items.push_back(reading("Latency", fmt::format("{:.0f} ms", std::round(*speed.baseRTTms))));
    }
    return items;
}

std::vector<ListRole<ReadingItem>> ReadingItem::roles() {
    using Item = ReadingItem;
    return {
        {"label", [](const Item& item) { return item.label; }},
        {"value", [](const Item& item) { return item.value; }},
        {"tone", [](const Item& item) { return static_cast<int>(item.tone); }},
    };
}

} // namespace pacelet
