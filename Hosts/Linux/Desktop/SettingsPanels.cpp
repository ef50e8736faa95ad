#include "Hosts/Linux/Desktop/SettingsPanels.h"

#include "Core/Platform/SettingsPane.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <array>

namespace pacelet::Linux {

namespace {

/// A desktop by its names in XDG_CURRENT_DESKTOP, and the programs that show a named panel.
struct SettingsProgram {
    std::string_view desktop;
    std::string_view program;
};
constexpr auto settingsPrograms = std::to_array<SettingsProgram>({
    {"GNOME", "gnome-control-center"},
    {"Unity", "gnome-control-center"},
    {"Budgie", "budgie-control-center"},
    {"X-Cinnamon", "cinnamon-settings"},
    {"KDE", "systemsettings"},
    {"KDE", "systemsettings5"},
    {"KDE", "kcmshell5"},
    {"XFCE", ""},
    {"MATE", ""},
    {"LXQt", ""},
});

/// Where the desktop's settings are programs of their own, `panel` is the command itself.
struct SettingsPanel {
    SettingsPane pane;
    std::string_view desktop;
    std::string_view panel;
};
constexpr auto settingsPanels = std::to_array<SettingsPanel>({
    {SettingsPane::spotlight, "GNOME", "search"},
    {SettingsPane::spotlight, "Unity", "search"},
    {SettingsPane::spotlight, "KDE", "kcm_baloofile"},
    {SettingsPane::loginItems, "KDE", "kcm_autostart"},
    {SettingsPane::loginItems, "X-Cinnamon", "startup"},
    {SettingsPane::loginItems, "XFCE", "xfce4-session-settings"},
    {SettingsPane::loginItems, "MATE", "mate-session-properties"},
    {SettingsPane::loginItems, "LXQt", "lxqt-config-session"},
    {SettingsPane::displays, "GNOME", "display"},
    {SettingsPane::displays, "Unity", "display"},
    {SettingsPane::displays, "Budgie", "display"},
    {SettingsPane::displays, "X-Cinnamon", "display"},
    {SettingsPane::displays, "KDE", "kcm_kscreen"},
    {SettingsPane::displays, "XFCE", "xfce4-display-settings"},
    {SettingsPane::displays, "MATE", "mate-display-properties"},
    {SettingsPane::displays, "LXQt", "lxqt-config-monitor"},
    {SettingsPane::accessibilityDisplay, "GNOME", "universal-access"},
    {SettingsPane::accessibilityDisplay, "Unity", "universal-access"},
    {SettingsPane::accessibilityDisplay, "Budgie", "universal-access"},
    {SettingsPane::accessibilityDisplay, "X-Cinnamon", "universal-access"},
    {SettingsPane::accessibilityDisplay, "KDE", "kcm_access"},
    {SettingsPane::accessibilityDisplay, "XFCE", "xfce4-accessibility-settings"},
    {SettingsPane::accessibilityDisplay, "MATE", "mate-at-properties"},
    {SettingsPane::battery, "GNOME", "power"},
    {SettingsPane::battery, "Unity", "power"},
    {SettingsPane::battery, "Budgie", "power"},
    {SettingsPane::battery, "X-Cinnamon", "power"},
    {SettingsPane::battery, "KDE", "kcm_powerdevilprofilesconfig"},
    {SettingsPane::battery, "XFCE", "xfce4-power-manager-settings"},
    {SettingsPane::battery, "MATE", "mate-power-preferences"},
    {SettingsPane::battery, "LXQt", "lxqt-config-powermanagement"},
    {SettingsPane::wifi, "GNOME", "wifi"},
    {SettingsPane::wifi, "Unity", "wifi"},
    {SettingsPane::wifi, "Budgie", "wifi"},
    {SettingsPane::wifi, "X-Cinnamon", "network"},
    {SettingsPane::wifi, "KDE", "kcm_networkmanagement"},
    {SettingsPane::wifi, "XFCE", "nm-connection-editor"},
    {SettingsPane::wifi, "MATE", "nm-connection-editor"},
    {SettingsPane::wifi, "LXQt", "nm-connection-editor"},
});

bool isOneOf(std::string_view desktop, std::span<const std::string> desktops) {
    return std::find(desktops.begin(), desktops.end(), desktop) != desktops.end();
}

} // namespace

std::vector<std::vector<std::string>> settingsCommands(std::string_view url,
                                                       std::span<const std::string> desktops) {
    std::vector<std::vector<std::string>> commands;
    const auto pane = fromRawValue<SettingsPane>(settingsPanes, url);
    for (const SettingsPanel& panel : settingsPanels) {
        if (panel.pane != pane || !isOneOf(panel.desktop, desktops)) {
            continue;
        }
        for (const SettingsProgram& settings : settingsPrograms) {
            if (settings.desktop == panel.desktop) {
                std::vector<std::string>& command = commands.emplace_back();
                if (!settings.program.empty()) {
                    command.emplace_back(settings.program);
                }
                command.emplace_back(panel.panel);
            }
        }
    }
    return commands;
}

} // namespace pacelet::Linux
