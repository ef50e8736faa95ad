#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/AppScope.h"
#include "Hosts/Linux/Apps/DesktopApp.h"
#include "Hosts/Linux/Apps/DesktopEntry.h"
#include "Hosts/Linux/Apps/ExecLine.h"
#include "tests/Support/Table.h"

#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

using pacelet::testing::rows;

std::vector<std::string> words(const std::string& text) {
    const auto pieces = splitDroppingEmpty(text, ' ');
    return {pieces.begin(), pieces.end()};
}

TEST(AppScope, ReadsTheUnitsOfTheDesktops) {
    for (const auto& [cgroup, ids] : rows<2>("Linux", "scopes of applications")) {
        EXPECT_EQ(appScopeIDs(cgroup), words(ids)) << cgroup;
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

TEST(DesktopEntry, KnowsWhatAMenuShowsAndWhatItStarts) {
    for (const auto& [lines, desktops, shows] : rows<3>("Linux", "entries in menus")) {
        const auto entry = parseDesktopEntry("[Desktop Entry]\nType=Application\n" + lines);
        EXPECT_EQ(isInMenu(*entry, words(desktops)), shows == "yes") << lines << desktops;
    }
    for (const auto& [line, command] : rows<2>("Linux", "commands of entries")) {
        std::string bracketed;
        for (const std::string& word : execCommand(line)) {
            bracketed += '[' + word + ']';
        }
        EXPECT_EQ(bracketed, command) << line;
    }
    for (const auto& [program, folder] : rows<2>("Linux", "folders that are a program's own")) {
        EXPECT_EQ(privateFolder(program, "/home/ann"), folder) << program;
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
