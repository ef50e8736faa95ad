#pragma once

#include "Core/Internet/SpeedResult.h"
#include "Core/Platform/Preferences.h"

#include <optional>

namespace pacelet {

/// The result of the last speed test, from the preferences; nothing when there was none, or when
/// what is kept does not read.
std::optional<SpeedResult> savedSpeed(Preferences& preferences);

void saveSpeed(Preferences& preferences, const SpeedResult& speed);

/// The result if it is fresh enough to say something about the line as it is now.
std::optional<SpeedResult> recent(const std::optional<SpeedResult>& speed, TimePoint now);

} // namespace pacelet
