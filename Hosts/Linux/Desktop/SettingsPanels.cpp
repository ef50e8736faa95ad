#include "Hosts/Linux/Desktop/SettingsPanels.h"

#include "Core/Platform/SettingsPane.h"
#include "Hosts/Linux/Apps/ProgramSearch.h"

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
    {"KDE", "kcmshell6"},
    {"KDE", "kcmshell5"},
});

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
    {SettingsPane::displays, "GNOME", "display"},
    {SettingsPane::displays, "Unity", "display"},
    {SettingsPane::displays, "Budgie", "display"},
    {SettingsPane::displays, "X-Cinnamon", "display"},
    {SettingsPane::displays, "KDE", "kcm_kscreen"},
    {SettingsPane::accessibilityDisplay, "GNOME", "universal-access"},
    {SettingsPane::accessibilityDisplay, "Unity", "universal-access"},
    {SettingsPane::accessibilityDisplay, "Budgie", "universal-access"},
    {SettingsPane::accessibilityDisplay, "X-Cinnamon", "effects"},
    {SettingsPane::accessibilityDisplay, "KDE", "kcm_kwin_effects"},
    {SettingsPane::battery, "GNOME", "power"},
    {SettingsPane::battery, "Unity", "power"},
    {SettingsPane::battery, "Budgie", "power"},
    {SettingsPane::battery, "X-Cinnamon", "power"},
    {SettingsPane::battery, "KDE", "kcm_powerdevilprofilesconfig"},
    {SettingsPane::wifi, "GNOME", "wifi"},
    {SettingsPane::wifi, "Unity", "wifi"},
    {SettingsPane::wifi, "Budgie", "wifi"},
    {SettingsPane::wifi, "X-Cinnamon", "network"},
    {SettingsPane::wifi, "KDE", "kcm_networkmanagement"},
});

/// Settings that are a program of their own. An empty desktop stands for all of them: these come
/// after a desktop's own.
struct PaneProgram {
    SettingsPane pane;
    std::string_view desktop;
    std::string_view program;
};
constexpr auto panePrograms = std::to_array<PaneProgram>({
    {SettingsPane::loginItems, "GNOME", "gnome-session-properties"},
    {SettingsPane::loginItems, "GNOME", "gnome-tweaks"},
    {SettingsPane::loginItems, "Unity", "gnome-session-properties"},
    {SettingsPane::loginItems, "Budgie", "gnome-session-properties"},
    {SettingsPane::loginItems, "XFCE", "xfce4-session-settings"},
    {SettingsPane::loginItems, "MATE", "mate-session-properties"},
    {SettingsPane::loginItems, "LXQt", "lxqt-config-session"},
    {SettingsPane::displays, "XFCE", "xfce4-display-settings"},
    {SettingsPane::displays, "MATE", "mate-display-properties"},
    {SettingsPane::displays, "LXQt", "lxqt-config-monitor"},
    {SettingsPane::accessibilityDisplay, "XFCE", "xfwm4-tweaks-settings"},
    {SettingsPane::accessibilityDisplay, "MATE", "mate-at-properties"},
    {SettingsPane::accessibilityDisplay, "LXQt", "lxqt-config-appearance"},
    {SettingsPane::battery, "XFCE", "xfce4-power-manager-settings"},
    {SettingsPane::battery, "MATE", "mate-power-preferences"},
    {SettingsPane::battery, "LXQt", "lxqt-config-powermanagement"},
    {SettingsPane::wifi, "", "nm-connection-editor"},
    {SettingsPane::wifi, "", "iwgtk"},
});

/// Applications that show what fills the disk, by the ids of their menu entries; those of one
/// desktop before the ones for all.
struct DiskTool {
    std::string_view desktop;
    std::string_view id;
};
constexpr auto diskTools = std::to_array<DiskTool>({
    {"KDE", "org.kde.filelight"},
    {"MATE", "mate-disk-usage-analyzer"},
    {"LXQt", "qdirstat"},
    {"", "org.gnome.baobab"},
    {"", "org.kde.filelight"},
    {"", "mate-disk-usage-analyzer"},
    {"", "qdirstat"},
    {"", "io.github.shundhammer.qdirstat"},
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
                commands.push_back({std::string{settings.program}, std::string{panel.panel}});
            }
        }
    }
    for (const PaneProgram& row : panePrograms) {
        if (row.pane == pane && (row.desktop.empty() || isOneOf(row.desktop, desktops))) {
            commands.push_back({std::string{row.program}});
        }
    }
    return commands;
}

HostAbilities desktopAbilities(const DesktopPlaces& places) {
    HostAbilities abilities;
    const auto isInstalled = [&](const std::vector<std::string>& command) {
        return findProgram(command.front(), places.searchPath).has_value();
    };
    for (const SettingsPaneRow& row : settingsPanes) {
        if (std::ranges::none_of(settingsCommands(row.rawValue, places.desktops), isInstalled)) {
            abilities.missingPanes.push_back(row.value);
        }
    }
    for (const DiskTool& tool : diskTools) {
        const std::string id{tool.id};
        if ((tool.desktop.empty() || isOneOf(tool.desktop, places.desktops)) &&
            std::ranges::count(abilities.diskTools, id) == 0 && findEntryFile(places, id)) {
            abilities.diskTools.push_back(id);
        }
    }
    abilities.freesSpace = !abilities.diskTools.empty();
    abilities.rebuildsIndex = false;
    return abilities;
}

} // namespace pacelet::Linux
