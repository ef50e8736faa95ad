#include "PaceletApp/InternetView/SavedSpeed.h"

#include <string_view>

namespace pacelet {

namespace {

constexpr std::string_view key = "lastSpeedTest";

/// A result of this age no longer counts.
constexpr Seconds stale{3600};

} // namespace

std::optional<SpeedResult> savedSpeed(Preferences& preferences) {
    const auto bytes = preferences.data(key);
    return bytes ? SpeedResult::fromJson(*bytes) : std::nullopt;
}

void saveSpeed(Preferences& preferences, const SpeedResult& speed) {
    preferences.setData(key, speed.toJson());
}

std::optional<SpeedResult> recent(const std::optional<SpeedResult>& speed, TimePoint now) {
    return speed && now - speed->measuredAt < stale ? speed : std::nullopt;
}

} // namespace pacelet
