#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

struct ProcessGroup;

/// The things that the program can offer to do.
enum class FixID {
    explain,
    openSpotlightSettings,
    openLoginItemsSettings,
    openDisplaySettings,
    openAccessibilityDisplay,
    openBatterySettings,
    openWiFiSettings,
    quitApp,
    rebuildSpotlightIndex,
    reviewTabs,
    openTidyvault,
    restartMac,
};

std::string_view rawValue(FixID fix);
std::optional<FixID> fixIDFromRawValue(std::string_view rawValue);

/// Caption of the fix's button; the name of `group` stands in that of `quitApp`. Null for no group.
std::string title(FixID fix, const ProcessGroup* group);

/// Name of the button's icon glyph.
std::string_view symbol(FixID fix);

} // namespace pacelet
