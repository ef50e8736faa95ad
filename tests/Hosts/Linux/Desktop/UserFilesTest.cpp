#include "Core/Support/Files.h"
#include "Hosts/Linux/User/AutostartEntry.h"
#include "Hosts/Linux/User/Base64.h"
#include "Hosts/Linux/User/PreferencesFile.h"
#include "tests/Support/NoThreads.h"
#include "tests/Support/Properties.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace pacelet::Linux {
namespace {

namespace fs = std::filesystem;
using pacelet::testing::rows;
using pacelet::testing::TemporaryFolder;

std::size_t entriesIn(const fs::path& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator{folder}, fs::directory_iterator{}));
}

/// Keeps what was said.
struct Messages final : Log {
    void write(LogLevel, std::string_view, std::string_view, std::string_view message) override {
        all.emplace_back(message);
    }
    std::vector<std::string> all;
};

class Preferences : public ::testing::Test {
protected:
    const TemporaryFolder folder;
    Messages log;
};

TEST_F(Preferences, ComeBackAfterARestart) {
    const std::string path = folder.path() / "deep/pacelet/preferences.json";
    const std::string bytes = std::string("\0\xff\n\"{}=", 7);
    {
        PreferencesFile file{path, log};
        EXPECT_FALSE(file.boolean("on"));
        file.setBoolean("on", true);
        file.setBoolean("off", false);
        file.setData("window", bytes);
        file.setData("empty", "");
        file.setBoolean("changed", true);
        file.setData("changed", "text");
        EXPECT_EQ(file.data("window"), bytes);
    }
    // An editor may have put a mark before it.
    folder.write("deep/pacelet/preferences.json",
                 "\xEF\xBB\xBF" + folder.read("deep/pacelet/preferences.json"));
    PreferencesFile file{path, log};
    EXPECT_EQ(file.boolean("on"), true);
    EXPECT_EQ(file.boolean("off"), false);
    EXPECT_EQ(file.data("window"), bytes);
    EXPECT_EQ(file.data("empty"), "");
    EXPECT_EQ(file.data("changed"), "text");
    EXPECT_FALSE(file.boolean("window") || file.boolean("changed") || file.data("on") ||
                 file.data("nothing"));
    EXPECT_EQ(entriesIn(fs::path{path}.parent_path()), 1U) << "no temporary file is left";
    EXPECT_EQ(file.trouble(), PreferencesTrouble::none);
    EXPECT_TRUE(log.all.empty());
    using fs::perms;
    EXPECT_EQ(fs::status(path).permissions() & (perms::group_all | perms::others_all), perms::none);
}

TEST_F(Preferences, DamagedFilesAreKeptAside) {
    for (const auto& [damaged] : rows<1>("Desktop", "damaged preferences")) {
        const TemporaryFolder own;
        const std::string path = own.write("preferences.json", damaged);
        own.write("preferences.json.flawed", "an earlier one");
        PreferencesFile file{path, log};
        EXPECT_FALSE(file.boolean("on") || file.data("on") || file.data("data")) << damaged;
        EXPECT_EQ(file.trouble(), PreferencesTrouble::flawed) << damaged;
        EXPECT_EQ(own.read("preferences.json"), damaged) << "a look changes nothing";
        file.setBoolean("on", true);
        file.setBoolean("off", false);
        file.synchronize();
        EXPECT_EQ(own.read("preferences.json"), "{\"off\":false,\"on\":true}\n") << damaged;
        EXPECT_EQ(own.read("preferences.json.flawed"), "an earlier one");
        EXPECT_EQ(own.read("preferences.json.flawed-2"), damaged);
        EXPECT_EQ(entriesIn(own.path()), 3U);
    }
}

TEST_F(Preferences, AreWrittenThroughLinks) {
    folder.link("config/preferences.json", "../dotfiles/inner");
    folder.link("dotfiles/inner", "real.json");
    const pacelet::testing::NoThreads noThreads; // then the caller writes
    PreferencesFile file{folder.path() / "config/preferences.json", log};
    EXPECT_EQ(file.trouble(), PreferencesTrouble::none) << "a file that is yet to be made";
    file.setBoolean("on", true);
    file.synchronize();
    EXPECT_EQ(folder.read("dotfiles/real.json"), "{\"on\":true}\n");
    EXPECT_TRUE(fs::is_symlink(folder.path() / "config/preferences.json"));
    EXPECT_TRUE(fs::is_symlink(folder.path() / "dotfiles/inner"));
}

TEST_F(Preferences, HoldWhereTheyCannotBeWrittenAndSayItOnce) {
    const std::string blocked = folder.write("file", "not a folder");
    folder.link("device", "/dev/null");
    const auto own = folder.path() / "own/preferences.json";
    fs::create_directories(own);
    for (const std::string& path :
         {blocked + "/preferences.json", own.string(), (folder.path() / "device").string()}) {
        log.all.clear();
        int told = 0;
        std::vector<std::function<void()>> posted;
        PreferencesFile file{
            path, log, [&](std::function<void()> work) { posted.push_back(std::move(work)); }};
        const ObserverHandle handle = file.observeTrouble([&] { ++told; });
        const std::size_t before = log.all.size();
        for (const bool on : {false, true}) {
            file.setBoolean("on", on);
            file.synchronize();
        }
        EXPECT_EQ(file.boolean("on"), true);
        EXPECT_EQ(file.trouble(), PreferencesTrouble::unwritable) << path;
        EXPECT_EQ(log.all.size(), before + 1) << path;
        ASSERT_EQ(posted.size(), 1U) << path;
        posted.front()();
        EXPECT_EQ(told, 1);
    }
    EXPECT_EQ(folder.read("file"), "not a folder");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(entriesIn(own.parent_path()), 1U) << "no temporary file is left";
}

TEST_F(Preferences, TextIsFaithful) {
    pacelet::testing::checkProperty(500, [](const std::map<std::string, std::string>& data) {
        PreferenceValues values;
        for (const auto& [key, bytes] : data) {
            values["k" + base64Encoded(key)] = PreferenceData{bytes};
            values["b" + base64Encoded(key)] = bytes.size() % 2 == 0;
        }
        RC_ASSERT(parsePreferences(writePreferences(values)) == (ParsedPreferences{values, true}));
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

TEST(LoginItem, AnEntryThatOpenedTheWindowStartsTheTrayAlone) {
    const std::string program = "/opt/a --hidden/pacelet";
    const std::string today = autostartText(program);
    std::string former = today;
    former.erase(former.rfind(" --hidden"), 9);
    for (const auto& [before, after] :
         {std::pair{former, today}, {former + "\n", former + "\n"}, {today, today}}) {
        const TemporaryFolder folder;
        const auto file = folder.write("autostart/app.pacelet.Pacelet.desktop", before);
        AutostartEntry(folder.path(), "/other").renew();
        AutostartEntry(folder.path(), program).renew();
        std::string text;
        EXPECT_FALSE(readFile(file, 1 << 16, text));
        EXPECT_EQ(text, after);
    }
    const TemporaryFolder empty;
    AutostartEntry(empty.path(), program).renew();
    EXPECT_TRUE(std::filesystem::is_empty(empty.path()));
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
