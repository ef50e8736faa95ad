#include "Hosts/Linux/Background/DesktopItems.h"
#include "Core/Knowledge/ProcessCatalog.h"
#include "tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <fmt/format.h>
#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

namespace fs = std::filesystem;
using pacelet::testing::TemporaryFolder;

/// A machine with packages, units and entries, all below one folder.
class DesktopItemsTest : public ::testing::Test {
protected:
    DesktopItemsTest() {
        folder.write("dpkg/status",
                     "Package: backup\nPriority: optional\nDescription: keeps copies\n\n"
                     "Package: core\nPriority: important\nDescription: holds all up\n");
        package("backup", {"lib/backup.timer", "lib/backup.service"});
        package("core", {"lib/core.service"});
        for (const std::string name : {"tool", "sync", "sh", "backupd"}) {
            program(name);
        }
    }

    std::string path(const std::string& name) const { return (folder.path() / name).string(); }
    void program(const std::string& name) const {
        fs::permissions(folder.write("bin/" + name, ""), fs::perms::owner_all);
    }
    void package(const std::string& name, const std::vector<std::string>& files) const {
        std::string list;
        for (const std::string& file : files) {
            list += path(file) + "\n";
        }
        folder.write("dpkg/info/" + name + ".list", list);
    }
    void entry(const std::string& name, const std::string& lines) const {
        folder.write(name + ".desktop", "[Desktop Entry]\nType=Application\nExec=tool\n" + lines);
    }
    void unit(const std::string& name, const std::string& lines) const {
        folder.write("lib/" + name, "[Unit]\nDescription=" + lines);
    }
    void enable(const std::string& manager, const std::string& name) const {
        folder.link(manager + "/default.target.wants/" + name, path("lib/" + name));
    }
    DesktopItems::Sources sources() const {
        const UnitFolders::Enabling system{path("system"), ItemScope::systemDaemon};
        const UnitFolders::Enabling own{path("config/systemd/user"), ItemScope::userAgent};
        const UnitFolders::Enabling all{path("user"), ItemScope::systemAgent};
        return {{{path("applications")}, {path("bin")}, {"XFCE"}, path("home")},
                path("config"),
                {path("xdg/autostart")},
                {{system}, {path("system"), path("lib")}, {".service", ".timer"}},
                {{own, all}, {own.path, path("lib")}, {".service", ".timer", ".socket"}},
                path("dpkg")};
    }
    /// Label, owner, program's name, scope and what each says of itself.
    std::vector<std::string> rows() {
        std::vector<std::string> texts;
        for (const BackgroundItem& item : items.items()) {
            const ProgramFacts& facts = *item.facts;
            texts.push_back(
                fmt::format("{} | {} | {} | {} | {}", item.label, item.ownerApp.value_or("-"),
                            fs::path{item.program.value_or("-")}.filename().string(),
                            rawValue(item.scope), facts.entryName + facts.unitDescription));
        }
        return texts;
    }

    TemporaryFolder folder;
    DesktopItems items{
        sources(),
        [this] { return std::make_shared<const DesktopIndex>(readDesktopApps(sources().places)); }};
};

using Rows = std::vector<std::string>;

TEST_F(DesktopItemsTest, EntriesStartWhatTheDesktopWouldStart) {
    EXPECT_EQ(rows(), Rows{});
    entry("applications/tool", "Name=The Tool\n");
    entry("config/autostart/mine", "Name=My tool\n");
    entry("config/autostart/off", "Hidden=true\n");
    entry("config/autostart/switched", "X-GNOME-Autostart-enabled=false\n");
    entry("config/autostart/script", "Name=Script\nExec=sh -c true\n");
    entry("config/autostart/gone", "Exec=/nowhere/gone\n");
    entry("config/autostart/asks", "TryExec=nothing\n");
    entry("config/autostart/here", "Name=Here\nOnlyShowIn=XFCE;\nNoDisplay=true\n");
    entry("config/autostart/there", "OnlyShowIn=KDE;GNOME;\n");
    entry("config/autostart/forced", "Name=Forced\nOnlyShowIn=KDE;\n"
                                     "X-XFCE-Autostart-Override=true\n");
    entry("config/autostart/first", "Name=First\nAutostartCondition=unless-exists done\n");
    entry("config/autostart/kde", "Name=KDE\nX-KDE-autostart-condition=kderc:General:Start:true\n");
    entry("xdg/autostart/off", "Name=Shadowed by the user's own\n");
    entry("xdg/autostart/all", "Name=For all\n");
    folder.write("config/autostart/broken.desktop", "no entry");
    folder.write("config/autostart/other.txt", "[Desktop Entry]\nType=Application\nExec=tool\n");
    const Rows expected{"first | The Tool | tool | userAgent | First",
                        "forced | The Tool | tool | userAgent | Forced",
                        "here | The Tool | tool | userAgent | Here",
                        "kde | The Tool | tool | userAgent | KDE",
                        "mine | The Tool | tool | userAgent | My tool",
                        "script | - | - | userAgent | Script",
                        "all | The Tool | tool | systemAgent | For all"};
    EXPECT_EQ(rows(), expected);
    folder.write("config/done", "");
    folder.write("config/kderc", "[Other]\nStart=true\n[General]\nStart=False\n");
    entry("config/autostart/mine", "Name=My new tool\n");
    EXPECT_EQ(rows(),
              (Rows{expected[1], expected[2], "mine | The Tool | tool | userAgent | My new tool",
                    expected[5], expected[6]}));
    // As the process table has it.
    EXPECT_EQ(items.items()[0].program, "/Applications/The Tool.app/Contents/MacOS/tool");
}

TEST_F(DesktopItemsTest, UnitsAreThoseThatLinksEnable) {
    unit("backup.timer", "Copies at night\n[Timer]\nOnCalendar=daily\n");
    unit("backup.service", "Copies\n[Service]\nExecStart=-" + path("bin/backupd") + " --all\n");
    unit("core.service", "Of the base system\n");
    unit("systemd-thing.service", "Of the service manager\n");
    unit("sync@.service", "Copies of %i (%p)\n[Service]\nExecStart=no\nExecStart=\n"
                          "ExecStart=sync %i\nRestart=on-failure\n");
    unit("off.service", "Not enabled\n");
    unit("masked.service", "Masked\n");
    unit("sound.service", "Sound\n[Service]\nExecStart=sh -c true\n");
    unit("sound.socket", "Starts the sound\n");
    folder.link("system/masked.service", "/dev/null");
    folder.link("system/default.target.wants/sync@ann.service", path("lib/sync@.service"));
    for (const std::string name :
         {"backup.timer", "core.service", "systemd-thing.service", "masked.service"}) {
        enable("system", name);
    }
    folder.link("system/default.target.wants/nowhere.service", path("lib/nowhere.service"));
    enable("user", "sound.service");
    enable("user", "sound.socket");
    enable("config/systemd/user", "backup.service");
    const Rows expected{"backup.service | backup | backupd | userAgent | Copies",
                        "sound.service | - | - | systemAgent | Sound",
                        "backup.timer | backup | backupd | systemDaemon | Copies at night",
                        "sync@ann.service | - | sync | systemDaemon | Copies of ann (sync)"};
    EXPECT_EQ(rows(), expected);
    const auto all = items.items();
    EXPECT_TRUE(all[3].keepAlive && all[3].runAtLoad);
    EXPECT_FALSE(all[2].keepAlive || all[2].runAtLoad);
    EXPECT_EQ(all[3].source, path("lib/sync@.service"));
    const Explanation own = ProcessCatalog{}.explain(all[3]);
    const Explanation desktops = ProcessCatalog{}.explain(all[1]);
    EXPECT_EQ(own.title + ", " + desktops.title, "Copies of ann, Sound");
    EXPECT_EQ(own.verdict, Verdict::review);
    EXPECT_EQ(desktops.verdict, Verdict::leave);
    fs::remove(path("user/default.target.wants/sound.service"));
    fs::remove(path("system/default.target.wants/sync@ann.service"));
    EXPECT_EQ(rows(), (Rows{expected[0], "sound.socket | - | - | systemAgent | Starts the sound",
                            expected[2]}));
}

TEST_F(DesktopItemsTest, UnitsCountOnceAndWithAllThatChangesThem) {
    unit("a-b.service", "Plain\n[Service]\nExecStart=tool\n");
    unit("a-c@.service", "Plain %i\n[Service]\nExecStart=tool\n");
    unit("screen.service", "LSB: shows the login\n[Service]\nExecStart=tool\n");
    unit("asked.service", "Somebody asks for it\n");
    enable("system", "a-b.service");
    folder.link("system/default.target.wants/other@x.service", path("lib/other@.service"));
    folder.link("lib/other@.service", "a-c@.service");
    folder.link("system/display.service", path("lib/screen.service"));
    folder.link("system/again.service", path("lib/a-b.service"));
    folder.link("system/dbus-org.asked.service", path("lib/asked.service"));
    folder.link("system/asked.service", path("lib/asked.service"));
    const auto piece = [&](const std::string& name, const std::string& text) {
        folder.write(name, text);
    };
    piece("lib/service.d/1.conf", "[Service]\nRestart=always\n");
    piece("lib/a-.service.d/2.conf", "[Unit]\nDescription=Of all a\n");
    piece("lib/a-.service.d/3.conf", "[Service]\nExecStart=backupd\n");
    piece("lib/a-b.service.d/2.conf", "[Unit]\nDescription=Hidden by the one above it\n");
    piece("system/a-b.service.d/2.conf", "[Unit]\nDescription=Of b\n");
    piece("system/a-b.service.d/9.conf", "[Service]\nRestart=no\nExecStart=\nExecStart=sync\n");
    piece("system/a-b.service.d/9.txt", "[Unit]\nDescription=No piece\n");
    EXPECT_EQ(rows(), (Rows{"a-b.service | - | sync | systemDaemon | Of b",
                            "a-c@x.service | - | tool | systemDaemon | Of all a",
                            "screen.service | - | tool | systemDaemon | shows the login"}));
    const auto all = items.items();
    EXPECT_FALSE(all[0].keepAlive);
    EXPECT_TRUE(all[1].keepAlive);
}

} // namespace
} // namespace pacelet::Linux
