#pragma once

#include "Core/Platform/SettingsPane.h"

#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

struct HostAbilities;
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

/// The page of the settings that the fix opens, where it is one that does.
std::optional<SettingsPane> paneOf(FixID fix);

/// The fix, unless it does not work on a machine with these abilities.
std::optional<FixID> offered(FixID fix, const HostAbilities& abilities);

/// Name of the button's icon glyph.
std::string_view symbol(FixID fix);

} // namespace pacelet
