#include "Core/Browser/ChromiumBrowser.h"
#include "Core/Fixes/FixRunner.h"
#include "Core/Platform/SettingsPane.h"
#include "Hosts/Linux/Desktop/AppInstances.h"
#include "Hosts/Linux/Desktop/BundleIdentifiers.h"
#include "Hosts/Linux/Desktop/DesktopWorkspace.h"
#include "Hosts/Linux/Desktop/IconTheme.h"
#include "Hosts/Linux/Desktop/SettingsPanels.h"
#include "Hosts/Linux/SystemClock.h"
#include "tests/Support/Eventually.h"
#include "tests/Support/FakeToolRunner.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

namespace fs = std::filesystem;
using pacelet::testing::rows;
using pacelet::testing::TemporaryFolder;

TEST(AppInstances, OneForEachMainProcess) {
    const auto process = [](std::int32_t pid, std::int32_t ppid, AppRole role,
                            const std::string& app) {
        const std::string place = role == AppRole::main ? "MacOS" : "Frameworks";
        return AppProcess{
            {pid, 7}, ppid, role, app, "/Applications/" + app + ".app/Contents/" + place + "/run"};
    };
    const auto pids = [](const std::vector<ProcessIdentity>& identities) {
        std::vector<std::int32_t> numbers;
        for (const ProcessIdentity& identity : identities) {
            numbers.push_back(identity.pid);
        }
        return numbers;
    };
    using Pids = std::vector<std::int32_t>;
    const std::vector<AppProcess> table{
        process(9, 8, AppRole::helper, "a"), // before its parent
        process(2, 1, AppRole::main, "a"),   process(3, 2, AppRole::helper, "a"),
        process(8, 1, AppRole::main, "a"),   process(4, 3, AppRole::helper, "a"),
        process(5, 1, AppRole::helper, "a"), // its parent is gone
        process(6, 7, AppRole::helper, "b"), // each other's parent, and no main process
        process(7, 6, AppRole::helper, "b"), process(10, 2, AppRole::main, "c")};
    const auto copies = appInstances(table);
    ASSERT_EQ(copies.size(), 4U);
    EXPECT_EQ(pids(copies[0].leaders), Pids{2});
    EXPECT_EQ(pids(copies[0].helpers), (Pids{3, 4, 5}));
    EXPECT_EQ(pids(copies[1].leaders), Pids{8});
    EXPECT_EQ(pids(copies[1].helpers), Pids{9});
    EXPECT_EQ(copies[2].bundlePath, "/Applications/c.app");
    EXPECT_EQ(pids(copies[3].leaders), (Pids{6, 7}));
    EXPECT_TRUE(copies[3].helpers.empty());
    EXPECT_TRUE(appInstances({}).empty());
}

TEST(Settings, LinksOpenTheDesktopsOwnPanels) {
    const auto commands = [](std::string_view url, const std::vector<std::string>& desktops) {
        std::string text;
        for (const auto& command : settingsCommands(url, desktops)) {
            text += fmt::format("{};", fmt::join(command, " "));
        }
        return text;
    };
    const std::string wifiOnAny = "nm-connection-editor;iwgtk;";
    EXPECT_EQ(commands(rawValue(SettingsPane::battery), {"ubuntu", "GNOME"}),
              "gnome-control-center power;");
    EXPECT_EQ(commands(rawValue(SettingsPane::displays), {"KDE"}),
              "systemsettings kcm_kscreen;systemsettings5 kcm_kscreen;kcmshell6 kcm_kscreen;"
              "kcmshell5 kcm_kscreen;");
    EXPECT_EQ(commands(rawValue(SettingsPane::wifi), {"X-Cinnamon"}),
              "cinnamon-settings network;" + wifiOnAny);
    for (const SettingsPane pane :
         {SettingsPane::loginItems, SettingsPane::displays, SettingsPane::battery}) {
        for (const char* desktop : {"GNOME", "KDE", "XFCE", "MATE", "X-Cinnamon", "LXQt"}) {
            EXPECT_NE(commands(rawValue(pane), {desktop}), "") << desktop;
        }
    }
    for (const SettingsPaneRow& row : settingsPanes) {
        const bool isKnown = row.value != SettingsPane::automation;
        EXPECT_EQ(!commands(row.rawValue, {"KDE"}).empty(), isKnown) << row.rawValue;
        EXPECT_EQ(commands(row.rawValue, {"sway"}),
                  row.value == SettingsPane::wifi ? wifiOnAny : "");
        EXPECT_EQ(commands(std::string{row.rawValue} + "x", {"GNOME", "KDE"}), "");
    }
}

TEST(BundleIdentifiers, EachChromiumBrowserIsKnownByItsOwn) {
    EXPECT_EQ(bundleIdentifier("google-chrome"), "com.google.Chrome");
    EXPECT_EQ(bundleIdentifier("brave-browser"), "com.brave.Browser");
    EXPECT_EQ(bundleIdentifier("microsoft-edge"), "com.microsoft.edgemac");
    EXPECT_EQ(bundleIdentifier("chromium"), "org.chromium.Chromium");
    EXPECT_EQ(bundleIdentifier("org.gnome.Maps"), "org.gnome.Maps");
    for (const auto& row : knownIdentifiers) {
        EXPECT_TRUE(std::any_of(
            chromiumBrowsers.begin(), chromiumBrowsers.end(),
            [&](const auto& browser) { return browser.rawValue == row.bundleIdentifier; }))
            << row.bundleIdentifier << " is no browser that the program speaks to";
    }
}

TEST(IconTheme, ReadsSizes) {
    const IconTheme theme = parseIconTheme("Size=48\n" // in no group
                                           "[Icon Theme]\nInherits=a,,b\n"
                                           "[16]\nSize=16\n"
                                           "[fixed@2]\nSize=32\nScale=2\nType=Fixed\n"
                                           "[none]\nType=Fixed\n"
                                           "[scalable]\nType=Scalable\nMinSize=8\nSize=64\n"
                                           "MaxSize=99999999\n"
                                           "[from 0]\nType=Scalable\nMinSize=0\nSize=64\n"
                                           "[bad]\nSize=-5\n[zero]\nSize=x\n");
    EXPECT_EQ(theme.inherits, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(
        theme.folders,
        (std::vector<IconFolder>{
            {"16", 14, 18}, {"fixed@2", 64, 64}, {"scalable", 8, 1 << 14}, {"from 0", 1, 64}}));
    EXPECT_EQ(theme.folders[0].distance(14), 0);
    EXPECT_EQ(theme.folders[0].distance(10), 4);
    EXPECT_EQ(theme.folders[0].distance(20), 2);
}

/// A desktop of our own making, below one folder.
class WorkspaceTest : public ::testing::Test {
protected:
    std::string path(const std::string& name) const { return (folder.path() / name).string(); }

    void script(const std::string& name, const std::string& text) const {
        fs::permissions(folder.write(name, "#!/bin/sh\n" + text), fs::perms::owner_all);
    }
    void entry(const std::string& id, const std::string& lines) const {
        folder.write("share/applications/" + id + ".desktop",
                     "[Desktop Entry]\nType=Application\n" + lines);
    }
    void theme(const std::string& name, const std::string& inherits,
               const std::vector<int>& sizes) const {
        std::string text = "[Icon Theme]\nInherits=" + inherits + "\n";
        for (const int size : sizes) {
            text +=
                "[" + std::to_string(size) + "]\nType=Fixed\nSize=" + std::to_string(size) + "\n";
        }
        folder.write("share/icons/" + name + "/index.theme", text);
    }
    DesktopWorkspace workspace(const std::vector<std::string>& desktops = {"GNOME"}) {
        places.desktops = desktops;
        return DesktopWorkspace{{"/proc",
                                 places,
                                 IconPlaces::from(places, path("config")),
                                 [](auto&) { return false; },
                                 {}},
                                tool};
    }
    /// What a program that was started leaves behind.
    std::string writtenTo(const std::string& name) const {
        pacelet::testing::eventually([&] { return folder.read(name).ends_with('\n'); });
        return folder.read(name);
    }
    std::string iconText(DesktopWorkspace& desktop, const std::string& bundle, int size) {
        const auto image = desktop.icon(bundle, size);
        return image ? std::string{reinterpret_cast<const char*>(image->bytes.data()),
                                   image->bytes.size()}
                     : "(none)";
    }

    TemporaryFolder folder;
    DesktopPlaces places{{path("share/applications")}, {path("bin")}, {}, path("home")};
    SystemClock clock;
    PSTool tool{"/proc", places, clock};
};

TEST_F(WorkspaceTest, OpensApplicationsAndAddresses) {
    script("opt/draw/draw", "echo \"$PWD|$#|$1|$(cat)\" > '" + path("started") + "'\n");
    script("bin/xdg-open", "echo \"$1\" > '" + path("opened") + "'\n");
    script("bin/gnome-control-center", "echo \"$*\" > '" + path("panel") + "'\n");
    fs::create_directories(path("work"));
    entry("draw", "Name=Draw\nExec=\"" + path("opt/draw/draw") +
                      "\" \"two words\" %U\nPath=" + path("work") + "\n");
    entry("draw-more", "Name=Draw\nExec=\"" + path("opt/draw/draw") + "\" a b c\n");
    entry("lost", "Name=Lost\nExec=\"" + path("opt/draw/draw") + "\"\nPath=/no/such/folder\n");
    DesktopWorkspace desktop = workspace();
    EXPECT_EQ(desktop.applicationPath("draw"), "/Applications/Draw.app");
    EXPECT_FALSE(desktop.applicationPath("Draw"));
    for (const char* nothing : {"/Applications/Lost.app", "/Applications/None.app", ""}) {
        desktop.openApplication(nothing);
    }
    desktop.openApplication("/Applications/Draw.app");
    EXPECT_EQ(writtenTo("started"), path("work") + "|1|two words|\n");

    const std::string url = "https://example.org/?a='b' $c";
    EXPECT_TRUE(desktop.openURL(url));
    EXPECT_EQ(writtenTo("opened"), url + "\n");
    EXPECT_TRUE(desktop.openURL(std::string{rawValue(SettingsPane::displays)}));
    EXPECT_EQ(writtenTo("panel"), "display\n");
    for (const char* refused : {"x-apple.systempreferences:com.example", "file:///etc/passwd",
                                "--help", "javascript:alert(1)", ""}) {
        EXPECT_FALSE(desktop.openURL(refused)) << refused;
    }
    fs::remove(path("bin/xdg-open"));
    EXPECT_FALSE(desktop.openURL(url)) << "nothing here opens it";
    EXPECT_FALSE(workspace({"KDE"}).openURL(std::string{rawValue(SettingsPane::displays)}));
}

TEST_F(WorkspaceTest, OffersWhatIsInstalledAndOpensIt) {
    using Panes = std::vector<SettingsPane>;
    places.desktops = {"XFCE"};
    HostAbilities abilities = desktopAbilities(places);
    EXPECT_EQ(abilities.missingPanes.size(), settingsPanes.size()) << "nothing is installed";
    EXPECT_FALSE(abilities.freesSpace || abilities.rebuildsIndex);
    EXPECT_TRUE(abilities.reviewsTabs);

    script("bin/xfce4-display-settings", "");
    script("bin/gnome-control-center", ""); // of another desktop
    script("bin/nm-connection-editor", "");
    script("bin/disk-tool", "echo shown > '" + path("disk") + "'\n");
    script("bin/xdg-open", "echo website > '" + path("disk") + "'\n");
    entry("org.gnome.baobab", "Name=Disk Usage\nExec=disk-tool\n");
    abilities = desktopAbilities(places);
    EXPECT_EQ(abilities.missingPanes, (Panes{SettingsPane::spotlight, SettingsPane::loginItems,
                                             SettingsPane::accessibilityDisplay,
                                             SettingsPane::automation, SettingsPane::battery}));
    EXPECT_TRUE(abilities.freesSpace);
    DesktopWorkspace desktop = workspace({"XFCE"});
    pacelet::testing::FakeToolRunner tools;
    const FixRunner fixes{desktop, tools, 0, abilities.diskTools};
    fixes.openTidyvault("https://example.org/");
    EXPECT_EQ(writtenTo("disk"), "shown\n");
}

TEST_F(WorkspaceTest, FindsIcons) {
    script("opt/draw/draw", "");
    const std::string exec = "Exec=\"" + path("opt/draw/draw") + "\"\n";
    for (auto [name, icon] : rows<2>("Desktop", "icons of entries")) {
        if (icon.starts_with("(here)")) {
            icon.replace(0, 6, folder.path().string());
        }
        entry(name, "Name=" + name + "\n" + exec + "Icon=" + icon + "\n");
    }
    entry("Bare", "Name=Bare\n" + exec);
    theme("mine", "parent,mine", {16, 48});
    theme("parent", "mine", {48});
    theme("hicolor", "", {48});
    for (const std::string name :
         {"mine/16/themed.png", "mine/48/themed.svg", "hicolor/48/themed.png",
          "parent/48/parent.png", "hicolor/48/common.png"}) {
        folder.write("share/icons/" + name, name);
    }
    folder.write("share/icons/mine/48/blank.png", "");
    folder.write("share/pixmaps/loose.png", "loose");
    folder.write("own.svg", "own");
    folder.write("own.txt", "text");
    folder.write("config/gtk-3.0/settings.ini", "[Settings]\ngtk-icon-theme-name = \"mine\"\n");
    DesktopWorkspace desktop = workspace();
    for (const auto& [name, size, picture] : rows<3>("Desktop", "pictures for sizes")) {
        EXPECT_EQ(iconText(desktop, "/Applications/" + name + ".app", std::stoi(size)), picture)
            << name << ' ' << size;
    }
    // Another desktop's setting goes before it.
    folder.write("config/kdeglobals", "[Icons]\nTheme=parent\n");
    EXPECT_EQ(iconText(desktop, "/Applications/Themed.app", 48), "mine/48/themed.svg");
    folder.write("share/icons/parent/48/themed.png", "parent's");
    EXPECT_EQ(iconText(desktop, "/Applications/Themed.app", 48), "parent's");
}

TEST_F(WorkspaceTest, WithoutABusNobodyIsToldOfSleep) {
    DesktopWorkspace desktop = workspace();
    auto handle = desktop.observeSleep([] { FAIL(); }, [] { FAIL(); });
    EXPECT_NE(handle, nullptr);
}

} // namespace
} // namespace pacelet::Linux
