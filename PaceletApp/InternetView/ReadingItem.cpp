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
    std::string_view tone;
};
constexpr std::array<QualityRow, 4> qualities{{
    {SignalQuality::poor, "red"},
    {SignalQuality::fair, "amber"},
    {SignalQuality::good, "green"},
    {SignalQuality::excellent, "green"},
}};

ReadingItem reading(std::string_view label, std::string_view value, const QString& tone = {}) {
    return {qtText(label), qtText(value), tone};
}

} // namespace

QString toneOf(SignalQuality quality) {
    return qtText(rowOf(qualities, quality).tone);
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
        {"tone", [](const Item& item) { return item.tone; }},
    };
}

} // namespace pacelet
