#include "Hosts/Linux/Apps/AppScope.h"
#include "Hosts/Linux/Apps/DesktopApp.h"
#include "Hosts/Linux/Apps/DesktopEntry.h"
#include "Hosts/Linux/Apps/ExecLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Names = std::vector<std::string>;

TEST(AppScope, ReadsTheUnitsOfTheDesktops) {
    const std::string user = "0::/user.slice/user-1000.slice/user@1000.service/app.slice/";
    const struct {
        std::string cgroup;
        Names ids;
    } cases[]{
        {user + "app-gnome-google\\x2dchrome-1234.scope\n",
         {"gnome-google-chrome", "google-chrome", "gnome-google-chrome-1234", "google-chrome-1234",
          "1234"}},
        {user + "app-org.kde.dolphin-77.scope", {"org.kde.dolphin", "org.kde.dolphin-77", "77"}},
        {user + "app-google-chrome-9.scope",
         {"google-chrome", "chrome", "google-chrome-9", "chrome-9", "9"}},
        {user + "app-org.kde.kate@0af3.service", {"org.kde.kate"}},
        {user + "app-gnome-a\\x2db\\xq@autostart.service", {"gnome-a-b\\xq", "a-b\\xq"}},
        {user + "dbus-:1.2-org.gnome.Nautilus@0.service",
         {":1.2-org.gnome.Nautilus", "org.gnome.Nautilus"}},
        {"0::/x/snap.firefox.firefox-01234567-89ab-cdef-0123-456789abcdef.scope",
         {"firefox_firefox"}},
        {"0::/x/snap.code.url-handler.01234567.scope", {"code_url-handler"}},
        {"12:pids:/other\n1:name=systemd:/a/app-x-1.scope/inner\n0::/\n", {"x", "x-1", "1"}},
        // What a terminal starts stands in a scope of its own.
        {user + "app-org.gnome.Terminal.slice/vte-spawn-12.scope", {}},
        {"0::/system.slice/cron.service", {}},
        {"0::/user.slice/user-1000.slice/session-2.scope", {}},
        {"0::/app-.scope\n\n:\n::\n3:app-a-1.scope", {}},
        {"0::/snap..scope", {}},
        {"", {}},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(appScopeIDs(row.cgroup), row.ids) << row.cgroup;
    }
}

TEST(DesktopEntry, ReadsItsOwnGroupOnly) {
    const auto entry = parseDesktopEntry("# a comment\n"
                                         "Name=Before any group\n"
                                         "[Desktop Entry]\r\n"
                                         "Type = Application\r\n"
                                         "\n"
                                         "Name=Two\\sWords\\\\\\q\n"
                                         "Name[de]=Zwei\n"
                                         "Exec=prog %U\n"
                                         "NoDisplay=false\n"
                                         "Categories=System;TerminalEmulator;\n"
                                         "No equals sign\n"
                                         "=no key\n"
                                         "[Desktop Action new]\n"
                                         "Name=Action\n"
                                         "Hidden=true\n"
                                         "[Desktop Entry]\n"
                                         "Exec=second");
    ASSERT_TRUE(entry);
    DesktopEntry expected;
    expected.type = "Application";
    expected.name = "Two Words\\\\q";
    expected.exec = "prog %U";
    expected.categories = {"System", "TerminalEmulator"};
    EXPECT_EQ(*entry, expected);
    EXPECT_EQ(parseDesktopEntry("Name=x\n[Other]\n"), std::nullopt);
    EXPECT_EQ(parseDesktopEntry(""), std::nullopt);
}

TEST(DesktopEntry, KnowsWhatAMenuShows) {
    const auto shows = [](const std::string& lines, const Names& desktops) {
        const auto entry = parseDesktopEntry("[Desktop Entry]\nType=Application\n" + lines);
        return isInMenu(*entry, desktops);
    };
    EXPECT_TRUE(shows("", {}));
    EXPECT_FALSE(shows("NoDisplay=true\n", {}));
    EXPECT_FALSE(shows("Hidden=true\n", {}));
    EXPECT_FALSE(shows("Type=Link\n", {}));
    EXPECT_TRUE(shows("OnlyShowIn=GNOME;Unity;\n", {"ubuntu", "GNOME"}));
    EXPECT_FALSE(shows("OnlyShowIn=GNOME;\n", {"KDE"}));
    EXPECT_FALSE(shows("OnlyShowIn=GNOME;\n", {}));
    EXPECT_FALSE(shows("NotShowIn=KDE;\n", {"KDE"}));
    EXPECT_TRUE(shows("NotShowIn=KDE;\n", {"GNOME"}));
}

TEST(ExecLine, FindsTheProgram) {
    EXPECT_THAT(execCommand("/usr/bin/prog --new-window %U"),
                ElementsAre("/usr/bin/prog", "--new-window"));
    EXPECT_THAT(execCommand("\"/opt/Two Words/a\\\"b\" %f  \"\" 100%%"),
                ElementsAre("/opt/Two Words/a\"b", "", "100%%"));
    EXPECT_THAT(execCommand("env HINT=/var/x.desktop A=1 /snap/bin/firefox %u"),
                ElementsAre("/snap/bin/firefox"));
    EXPECT_THAT(execCommand("/usr/bin/env"), IsEmpty());
    EXPECT_THAT(execCommand("  "), IsEmpty());
    EXPECT_THAT(execCommand("\"open end"), ElementsAre("open end"));
}

TEST(DesktopApp, FindsTheFolderThatIsItsOwn) {
    const struct {
        const char* program;
        const char* folder;
    } cases[]{
        {"/opt/google/chrome/google-chrome", "/opt/google/chrome"},
        {"/usr/lib/firefox-esr/firefox-esr", "/usr/lib/firefox-esr"},
        {"/usr/share/code/bin/code", "/usr/share/code"},
        {"/opt/idea-IU-233/bin/idea.sh", "/opt/idea-IU-233"},
        {"/home/ann/games/chess/chess", "/home/ann/games/chess"},
        // shared by everything
        {"/usr/bin/gedit", ""},
        {"/bin/sh", ""},
        {"/usr/libexec/helper", ""},
        {"/usr/lib/x86_64-linux-gnu/helper", ""},
        {"/usr/lib/qt6/bin/designer", ""},
        {"/home/ann/tool", ""},
        {"/home/ann/bin/ann", ""},
        {"/home/bob/.local/bin/tool", ""},
        {"/opt/tool", ""},
        {"tool", ""},
        {"", ""},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(privateFolder(row.program, "/home/ann"), row.folder) << row.program;
    }
}

TEST(DesktopApp, MakesNamesFitForAFolder) {
    EXPECT_EQ(bundleName("brave-browser", "Brave Web Browser"), "Brave Browser");
    EXPECT_EQ(bundleName("org.x", " TCP/IP\nMonitor "), "TCP-IP Monitor");
    EXPECT_EQ(bundleName("org.x", "Caf\xC3\xA9 \xFF"), "Caf\xC3\xA9 \xEF\xBF\xBD");
    EXPECT_EQ(bundleName("org.x", " \t"), "");
}

} // namespace
} // namespace pacelet::Linux
