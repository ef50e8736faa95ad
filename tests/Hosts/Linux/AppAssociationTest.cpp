#include "Hosts/Linux/Apps/AppAssociation.h"
#include "Hosts/Linux/Apps/BoxedApp.h"
#include "Hosts/Linux/Proc/CommandLine.h"
#include "tests/Support/Table.h"

#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

DesktopIndex index() {
    return DesktopIndex{{
        {"google-chrome", "Google Chrome", "/opt/google/chrome/google-chrome",
         "/opt/google/chrome"},
        {"chrome-mail", "Mail", "/opt/google/chrome/google-chrome", "/opt/google/chrome", false, 2},
        {"org.gnome.TextEditor", "Text Editor", "/usr/bin/gnome-text-editor", ""},
        {"org.gnome.Terminal", "Terminal", "/usr/bin/gnome-terminal", "", true},
        {"org.kde.konsole", "Konsole", "/usr/bin/konsole", "", true},
        {"libreoffice-writer", "LibreOffice Writer", "/usr/lib/libreoffice/program/soffice",
         "/usr/lib/libreoffice/program", false, 1, "--writer"},
        {"libreoffice-startcenter", "LibreOffice", "/usr/lib/libreoffice/program/soffice",
         "/usr/lib/libreoffice/program"},
        {"org.gnome.tweaks", "Tweaks", "", ""},
        {"firefox_firefox", "Firefox", "", "/snap/firefox"},
        {"designer", "Designer", "/opt/qt/designer", "/opt/qt"},
        {"assistant", "Assistant", "/opt/qt/assistant", "/opt/qt"},
        {"other.editor", "Text Editor", "/usr/bin/other-editor", ""},
        {"gimp", "GIMP", "/usr/bin/gimp-2.10", "/usr/lib/gimp"},
    }};
}

TEST(AppAssociation, ShowsApplicationsAsBundles) {
    const DesktopIndex apps = index();
    for (const auto& [what, program, scope, terminal, parent, parentApp, path, why] :
         pacelet::testing::rows<8>("Linux", "processes and their applications")) {
        const std::string group = "0::/user.slice/app.slice/app-gnome-" + scope + "-12.scope\n";
        const std::string_view cgroup = scope.empty() ? std::string_view{} : group;
        const ProcessFacts facts{program, cgroup, !terminal.empty(), parent, parentApp};
        const Association association = associate(apps, facts);
        EXPECT_EQ(bundledPath(association, program), path) << what;
        EXPECT_EQ(describe(association.reason), why) << what;
    }
}

TEST(AppAssociation, NamesASuiteByWhatWasAskedOfIt) {
    const DesktopIndex apps = index();
    ProcessFacts facts{"/usr/lib/libreoffice/program/soffice.bin"};
    for (const auto& [commandLine, name] :
         {std::pair{std::string_view{"soffice.bin\0--writer\0a.odt\0", 26}, "LibreOffice Writer"},
          std::pair{std::string_view{"soffice.bin\0a.odt\0", 18}, "LibreOffice"}}) {
        facts.commandLine = commandLine;
        EXPECT_EQ(associate(apps, facts).app->name, name);
    }
}

TEST(AppAssociation, KnowsApplicationsThatBringTheirOwnWorld) {
    for (const auto& [program, cgroup, id, name] :
         pacelet::testing::rows<4>("Linux", "worlds of their own")) {
        const auto box = boxedApp(program, cgroup);
        EXPECT_EQ(box ? box->app.id : "", id) << cgroup;
        EXPECT_EQ(box ? box->app.name : "", name) << cgroup;
    }
}

TEST(CommandLine, TellsScriptsAndParts) {
    for (const auto& [commandLine, comm, script, part] :
         pacelet::testing::rows<4>("Linux", "command lines")) {
        EXPECT_EQ(CommandLine::script(commandLine), script) << commandLine;
        EXPECT_EQ(CommandLine::part(commandLine, comm), part) << commandLine;
    }
}

} // namespace
} // namespace pacelet::Linux
