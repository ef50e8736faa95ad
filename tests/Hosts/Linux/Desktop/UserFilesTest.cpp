#include "Hosts/Linux/User/AutostartEntry.h"
#include "Hosts/Linux/User/Base64.h"
#include "Hosts/Linux/User/PreferencesFile.h"
#include "tests/Support/Properties.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>

namespace pacelet::Linux {
namespace {

namespace fs = std::filesystem;
using pacelet::testing::rows;
using pacelet::testing::TemporaryFolder;

std::size_t entriesIn(const fs::path& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator{folder}, fs::directory_iterator{}));
}

TEST(Preferences, ComeBackAfterARestart) {
    const TemporaryFolder folder;
    const std::string path = folder.path() / "deep/pacelet/preferences.json";
    const std::string bytes{"\0\xff\n\"{}=", 8};
    {
        PreferencesFile file{path};
        EXPECT_FALSE(file.boolean("on"));
        file.setBoolean("on", true);
        file.setBoolean("off", false);
        file.setData("window", bytes);
        file.setData("empty", "");
        file.setBoolean("changed", true);
        file.setData("changed", "text");
        EXPECT_EQ(file.data("window"), bytes);
    }
    PreferencesFile file{path};
    EXPECT_EQ(file.boolean("on"), true);
    EXPECT_EQ(file.boolean("off"), false);
    EXPECT_EQ(file.data("window"), bytes);
    EXPECT_EQ(file.data("empty"), "");
    EXPECT_EQ(file.data("changed"), "text");
    EXPECT_FALSE(file.boolean("window") || file.boolean("changed") || file.data("on") ||
                 file.data("nothing"));
    EXPECT_EQ(entriesIn(fs::path{path}.parent_path()), 1U) << "no temporary file is left";
    using fs::perms;
    EXPECT_EQ(fs::status(path).permissions() & (perms::group_all | perms::others_all), perms::none);
}

TEST(Preferences, DamagedFilesAreEmptyAndReplaced) {
    for (const auto& [damaged] : rows<1>("Desktop", "damaged preferences")) {
        const TemporaryFolder folder;
        const std::string path = folder.write("preferences.json", damaged);
        PreferencesFile file{path};
        EXPECT_FALSE(file.boolean("on") || file.data("on") || file.data("data")) << damaged;
        file.setBoolean("on", true);
        EXPECT_EQ(folder.read("preferences.json"), "{\"on\":true}\n") << damaged;
    }
}

TEST(Preferences, HoldWithoutAFolderToWriteTo) {
    const TemporaryFolder folder;
    const std::string blocked = folder.write("file", "not a folder");
    for (const std::string& path : {blocked + "/preferences.json", folder.path().string()}) {
        PreferencesFile file{path};
        file.setBoolean("on", true);
        file.setData("data", "bytes");
        EXPECT_EQ(file.boolean("on"), true);
        EXPECT_EQ(file.data("data"), "bytes");
    }
    EXPECT_EQ(folder.read("file"), "not a folder");
    EXPECT_EQ(entriesIn(folder.path().parent_path() / folder.path().filename()), 1U);
    for (const auto& entry : fs::directory_iterator{folder.path().parent_path()}) {
        EXPECT_FALSE(entry.path().string().starts_with(folder.path().string() + "."))
            << "a temporary file is left: " << entry.path();
    }
}

TEST(Preferences, TextIsFaithful) {
    pacelet::testing::checkProperty(500, [](const std::map<std::string, std::string>& data) {
        PreferenceValues values;
        for (const auto& [key, bytes] : data) {
            values["k" + base64Encoded(key)] = PreferenceData{bytes};
            values["b" + base64Encoded(key)] = bytes.size() % 2 == 0;
        }
        RC_ASSERT(parsePreferences(writePreferences(values)) == values);
    });
}

TEST(Base64, KnownAndBrokenTexts) {
    for (const auto& [bytes, text] : rows<2>("Desktop", "bytes and their Base64")) {
        EXPECT_EQ(base64Encoded(bytes), text);
        EXPECT_EQ(base64Decoded(text), bytes);
    }
    for (const auto& [broken] : rows<1>("Desktop", "texts that are no Base64")) {
        EXPECT_FALSE(base64Decoded(broken)) << broken;
    }
}

TEST(LoginItem, IsRegisteredAndTakenBack) {
    for (const std::string program : {"/usr/bin/pacelet", "/opt/My \"Apps\"/100% $HOME/pace`let\\x",
                                      "/a%%b/%f/tab\tnew\nline"}) {
        const TemporaryFolder folder;
        AutostartEntry item{folder.path() / "config", program};
        EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);
        EXPECT_TRUE(item.unregisterProgram()) << "there was nothing to take back";
        ASSERT_TRUE(item.registerProgram());
        EXPECT_TRUE(item.registerProgram());
        EXPECT_EQ(item.status(), LoginItemStatus::enabled) << program;
        EXPECT_EQ(AutostartEntry(folder.path() / "config", "/other").status(),
                  LoginItemStatus::notRegistered);
        EXPECT_EQ(entriesIn(folder.path() / "config/autostart"), 1U);
        EXPECT_TRUE(item.unregisterProgram());
        EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);
    }
}

TEST(LoginItem, TheUsersSwitchCounts) {
    const std::string program = "/usr/bin/pacelet";
    const std::string own = autostartText(program);
    const auto statusOf = [](const std::string& name) {
        return name == "enabled"            ? LoginItemStatus::enabled
               : name == "requiresApproval" ? LoginItemStatus::requiresApproval
                                            : LoginItemStatus::notRegistered;
    };
    for (auto [entry, status] : rows<2>("Desktop", "entries for the login")) {
        if (entry.starts_with("(own)")) {
            entry.replace(0, 5, own);
        }
        EXPECT_EQ(autostartStatus(entry, program), statusOf(status)) << entry;
    }
    const TemporaryFolder folder;
    folder.write("autostart/app.pacelet.Pacelet.desktop", own + "Hidden=true\n");
    AutostartEntry item{folder.path(), program};
    EXPECT_EQ(item.status(), LoginItemStatus::requiresApproval);
    EXPECT_TRUE(item.registerProgram());
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
}

TEST(LoginItem, RefusalIsTold) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "");
    EXPECT_FALSE(AutostartEntry(file, "/usr/bin/pacelet").registerProgram());
    EXPECT_TRUE(AutostartEntry(file, "/usr/bin/pacelet").unregisterProgram());
    EXPECT_FALSE(AutostartEntry(folder.path(), "").registerProgram());
    folder.write("autostart/app.pacelet.Pacelet.desktop/inside", "");
    AutostartEntry blocked{folder.path(), "/usr/bin/pacelet"};
    EXPECT_FALSE(blocked.registerProgram());
    EXPECT_FALSE(blocked.unregisterProgram());
    EXPECT_EQ(blocked.status(), LoginItemStatus::notRegistered);
}

} // namespace
} // namespace pacelet::Linux
