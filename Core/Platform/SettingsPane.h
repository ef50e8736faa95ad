#pragma once

#include "Core/Support/EnumTable.h"

#include <array>
#include <string_view>

namespace pacelet {

/// The pages of the system's settings that the program can open.
enum class SettingsPane {
    spotlight,
    loginItems,
    displays,
    accessibilityDisplay,
    automation,
    battery,
    wifi,
};

struct SettingsPaneRow {
    SettingsPane value;
    std::string_view rawValue; ///< the deep link into the settings application
};

inline constexpr std::array<SettingsPaneRow, 7> settingsPanes{{
    {SettingsPane::spotlight, "x-apple.systempreferences:com.apple.Spotlight-Settings.extension"},
    {SettingsPane::loginItems, "x-apple.systempreferences:com.apple.LoginItems-Settings.extension"},
    {SettingsPane::displays, "x-apple.systempreferences:com.apple.Displays-Settings.extension"},
    {SettingsPane::accessibilityDisplay,
     "x-apple.systempreferences:com.apple.Accessibility-Settings.extension?Display"},
    {SettingsPane::automation,
     "x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"},
    {SettingsPane::battery, "x-apple.systempreferences:com.apple.Battery-Settings.extension"},
    {SettingsPane::wifi, "x-apple.systempreferences:com.apple.wifi-settings-extension"},
}};

constexpr std::string_view rawValue(SettingsPane pane) {
    return rowOf(settingsPanes, pane).rawValue;
}

} // namespace pacelet
