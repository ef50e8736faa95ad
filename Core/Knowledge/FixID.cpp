#include "Core/Knowledge/FixID.h"

#include "Core/Platform/HostAbilities.h"
#include "Core/Sampling/ProcessGroup.h"
#include "Core/Support/EnumTable.h"

namespace pacelet {

namespace {

struct FixRow {
    FixID value;
    std::string_view rawValue;
    std::string_view title;
    std::string_view symbol;
    std::optional<SettingsPane> pane{};
};
constexpr std::string_view settingsSymbol = "slider.horizontal.3";
constexpr std::array<FixRow, 12> fixes{{
    {FixID::explain, "explain", "Explain this process", "text.magnifyingglass"},
    {FixID::openSpotlightSettings, "openSpotlightSettings", "Spotlight settings", settingsSymbol,
     SettingsPane::spotlight},
    {FixID::openLoginItemsSettings, "openLoginItemsSettings", "Login Items settings",
     settingsSymbol, SettingsPane::loginItems},
    {FixID::openDisplaySettings, "openDisplaySettings", "Displays settings", settingsSymbol,
     SettingsPane::displays},
    {FixID::openAccessibilityDisplay, "openAccessibilityDisplay", "Reduce transparency",
     settingsSymbol, SettingsPane::accessibilityDisplay},
    {FixID::openBatterySettings, "openBatterySettings", "Battery settings", settingsSymbol,
     SettingsPane::battery},
    {FixID::openWiFiSettings, "openWiFiSettings", "Wi-Fi settings", settingsSymbol,
     SettingsPane::wifi},
    {FixID::quitApp, "quitApp", "Quit app", "xmark.circle"},
    {FixID::rebuildSpotlightIndex, "rebuildSpotlightIndex", "Rebuild Spotlight index",
     "arrow.clockwise"},
    {FixID::reviewTabs, "reviewTabs", "Review tabs", "rectangle.stack"},
    {FixID::openTidyvault, "openTidyvault", "Free up space", "internaldrive"},
    {FixID::restartMac, "restartMac", "Restart…", "power"},
}};

} // namespace

std::string_view rawValue(FixID fix) {
    return rowOf(fixes, fix).rawValue;
}

std::optional<FixID> fixIDFromRawValue(std::string_view rawValue) {
    return fromRawValue<FixID>(fixes, rawValue);
}

std::string title(FixID fix, const ProcessGroup* group) {
    if (fix == FixID::quitApp && group != nullptr) {
        return "Quit " + group->displayName;
    }
    return std::string{rowOf(fixes, fix).title};
}

std::optional<SettingsPane> paneOf(FixID fix) {
    return rowOf(fixes, fix).pane;
}

std::optional<FixID> offered(FixID fix, const HostAbilities& abilities) {
    const auto pane = paneOf(fix);
    const bool works = (!pane || abilities.opens(*pane)) &&
                       (fix != FixID::rebuildSpotlightIndex || abilities.rebuildsIndex) &&
                       (fix != FixID::reviewTabs || abilities.reviewsTabs) &&
                       (fix != FixID::openTidyvault || abilities.freesSpace) &&
                       (fix != FixID::restartMac || abilities.restarts);
    return works ? std::optional{fix} : std::nullopt;
}

std::string_view symbol(FixID fix) {
    return rowOf(fixes, fix).symbol;
}

} // namespace pacelet
