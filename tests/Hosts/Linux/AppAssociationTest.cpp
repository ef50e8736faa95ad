#include "Hosts/Linux/Apps/AppAssociation.h"

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

std::string scopeOf(const std::string& id) {
    return "0::/user.slice/app.slice/app-gnome-" + id + "-12.scope\n";
}

struct Case {
    std::string what;
    ProcessFacts facts;
    std::string path;
    AssociationReason reason;
};

TEST(AppAssociation, ShowsApplicationsAsBundles) {
    using enum AssociationReason;
    const std::string chrome = "/opt/google/chrome/chrome";
    const std::string editor = "/usr/bin/gnome-text-editor";
    const std::string chromeApp = "/Applications/Google Chrome.app/Contents/";
    const std::string tweaksScope = scopeOf("org.gnome.tweaks");
    const std::string writerScope = scopeOf("libreoffice-writer");
    const std::string chromeScope = scopeOf("google\\x2dchrome");
    const std::string konsoleScope = scopeOf("org.kde.konsole");
    const std::string unknownScope = scopeOf("not.in.any.menu");
    const Case cases[]{
        {"the main program", {chrome}, chromeApp + "MacOS/chrome", entryFolder},
        {"its scope says so first", {chrome, chromeScope}, chromeApp + "MacOS/chrome", appScope},
        {"a helper from the same program",
         {chrome, "", false, chrome, "google-chrome"},
         chromeApp + "Frameworks/chrome",
         entryFolder},
        {"another program of the folder",
         {"/opt/google/chrome/chrome_crashpad_handler"},
         chromeApp + "Frameworks/chrome_crashpad_handler",
         entryFolder},
        {"deep below the folder",
         {"/snap/firefox/42/usr/lib/firefox/firefox"},
         "/Applications/Firefox.app/Contents/MacOS/firefox",
         entryFolder},
        {"a foreign program in the scope",
         {"/usr/bin/cat", chromeScope},
         chromeApp + "Frameworks/cat",
         appScope},
        {"an entry of the same program by its scope",
         {"/usr/lib/libreoffice/program/soffice.bin", writerScope},
         "/Applications/LibreOffice Writer.app/Contents/MacOS/soffice.bin",
         appScope},
        {"the plainest entry without a scope",
         {"/usr/lib/libreoffice/program/soffice.bin"},
         "/Applications/LibreOffice.app/Contents/MacOS/soffice.bin",
         entryFolder},
        {"a script's interpreter leads its scope",
         {"/usr/bin/python3.11", tweaksScope, false, "/usr/bin/sh", "org.gnome.tweaks"},
         "/Applications/Tweaks.app/Contents/MacOS/python3.11",
         appScope},
        {"and its start script does not",
         {"/usr/bin/sh", tweaksScope},
         "/Applications/Tweaks.app/Contents/Frameworks/sh",
         appScope},
        {"nor does its child",
         {"/usr/bin/python3.11", tweaksScope, false, "/usr/bin/python3.11", "org.gnome.tweaks"},
         "/Applications/Tweaks.app/Contents/Frameworks/python3.11",
         appScope},
        {"an application started by another one",
         {editor, chromeScope},
         "/Applications/Text Editor.app/Contents/MacOS/gnome-text-editor",
         entryProgram},
        {"two applications of one name",
         {"/usr/bin/other-editor"},
         "/Applications/Text Editor (other.editor).app/Contents/MacOS/other-editor",
         entryProgram},
        {"a shared folder ties nothing together", {"/usr/bin/cat"}, "/usr/bin/cat", noApplication},
        {"a folder of two applications is neither's own",
         {"/opt/qt/lupdate"},
         "/opt/qt/lupdate",
         noApplication},
        {"yet each has its program",
         {"/opt/qt/assistant"},
         "/Applications/Assistant.app/Contents/MacOS/assistant",
         entryProgram},
        {"inside a terminal", {"/usr/bin/make", konsoleScope}, "/usr/bin/make", insideTerminal},
        {"inside an application's own terminal",
         {"/usr/bin/make", chromeScope, true},
         "/usr/bin/make",
         insideTerminal},
        {"an application from inside a terminal",
         {chrome, konsoleScope, true},
         chromeApp + "MacOS/chrome",
         entryFolder},
        {"the terminal itself",
         {"/usr/bin/konsole", konsoleScope},
         "/Applications/Konsole.app/Contents/MacOS/konsole",
         entryProgram},
        {"a terminal's server",
         {"/usr/libexec/gnome-terminal-server"},
         "/Applications/Terminal.app/Contents/MacOS/gnome-terminal-server",
         entryProgram},
        {"a service in an application's scope",
         {"/usr/libexec/xdg-desktop-portal-gtk", chromeScope},
         "/usr/libexec/xdg-desktop-portal-gtk",
         service},
        {"the shell itself",
         {"/usr/bin/gnome-shell", chromeScope},
         "/usr/bin/gnome-shell",
         sessionPart},
        {"ourselves",
         {"/home/ann/pacelet/pacelet-report"},
         "/home/ann/pacelet/pacelet-report",
         sessionPart},
        {"a scope of no menu", {"/usr/bin/cat", unknownScope}, "/usr/bin/cat", noApplication},
        {"no path at all", {"?"}, "?", noApplication},
    };
    const DesktopIndex apps = index();
    for (const Case& row : cases) {
        const Association association = associate(apps, row.facts);
        EXPECT_EQ(bundledPath(association, row.facts.executable), row.path) << row.what;
        EXPECT_EQ(describe(association.reason), describe(row.reason)) << row.what;
    }
}

} // namespace
} // namespace pacelet::Linux
