#include "Hosts/Linux/Apps/AppAssociation.h"
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
         "/usr/lib/libreoffice/program", false, 1},
        {"libreoffice-startcenter", "LibreOffice", "/usr/lib/libreoffice/program/soffice",
         "/usr/lib/libreoffice/program"},
        {"org.gnome.tweaks", "Tweaks", "", ""},
        {"firefox_firefox", "Firefox", "", "/snap/firefox"},
        {"designer", "Designer", "/opt/qt/designer", "/opt/qt"},
        {"assistant", "Assistant", "/opt/qt/assistant", "/opt/qt"},
        {"other.editor", "Text Editor", "/usr/bin/other-editor", ""},
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

} // namespace
} // namespace pacelet::Linux
