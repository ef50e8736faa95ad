#include "Core/Internet/SpeedResult.h"

#include "Core/Internet/JsonNumbers.h"
#include "Core/Support/JsonWriter.h"

#include <cmath>
#include <fmt/format.h>

namespace pacelet {

namespace {

/// 2001-01-01 00:00 UTC, from which the persisted form counts, in seconds since 1970.
constexpr double referenceDate = 978307200.0;

} // namespace

std::string SpeedResult::toJson() const {
    JsonWriter writer;
    writer.beginObject();
    writer.key("downloadMbps").value(downloadMbps);
    writer.key("uploadMbps").value(uploadMbps);
    if (responsivenessRPM) {
        writer.key("responsivenessRPM").value(*responsivenessRPM);
    }
    if (baseRTTms) {
        writer.key("baseRTTms").value(*baseRTTms);
    }
    writer.key("measuredAt").value(unixTime(measuredAt) - referenceDate);
    writer.endObject();
    return writer.take();
}

std::optional<SpeedResult> SpeedResult::fromJson(std::string_view json) {
    const auto numbers = JsonNumbers::read(json);
    if (!numbers) {
        return std::nullopt;
    }
    const auto download = numbers->number("downloadMbps");
    const auto upload = numbers->number("uploadMbps");
    const auto measuredAt = numbers->number("measuredAt");
    if (!download || !upload || !measuredAt) {
        return std::nullopt;
    }
    const auto responsiveness = numbers->truncated("responsivenessRPM");
    const auto baseRTT = numbers->number("baseRTTms");
    const bool isWhole = !responsiveness || static_cast<double>(*responsiveness) ==
                                                *numbers->number("responsivenessRPM");
    if (!isWhole || responsiveness.has_value() == numbers->isAbsent("responsivenessRPM") ||
        baseRTT.has_value() == numbers->isAbsent("baseRTTms")) {
        return std::nullopt;
    }
    return SpeedResult{*download, *upload, responsiveness, baseRTT,
                       fromUnixTime(*measuredAt + referenceDate)};
}

std::string megabits(double mbps) {
    // Adding zero turns a negative zero into a plain one.
    return fmt::format("{:.0f} Mbps", std::round(mbps) + 0.0);
}

} // namespace pacelet
