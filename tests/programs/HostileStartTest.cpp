#include "tests/Support/ChildProgram.h"
#include "tests/Support/PrivateDisplay.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace pacelet::testing {
namespace {

namespace fs = std::filesystem;

/// The programs themselves, where something about their start is wrong.
class HostileStart : public ::testing::Test {
protected:
    std::string path(const std::string& name) const { return (folder.path() / name).string(); }

    Environment environment(const std::string& platform) const {
        return {{"HOME", path("home")},
                {"TMPDIR", path("tmp")},
                {"XDG_RUNTIME_DIR", path("run")},
                {"XDG_CONFIG_HOME", ""},
                {"XDG_DATA_HOME", path("data")},
                {"DISPLAY", ""},
                {"WAYLAND_DISPLAY", ""},
                {"QT_QPA_PLATFORM", platform},
                {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/none"},
                {"ASAN_OPTIONS", "detect_leaks=0"},
                {"BIN", PACELET_BIN_DIR}};
    }

    void SetUp() override {
        for (const char* name : {"home", "tmp", "run", "bin", "share/pacelet"}) {
            fs::create_directories(folder.path() / name);
        }
        // What no applications folder should hold.
        const fs::path entries = folder.path() / "data/applications";
        fs::create_directories(entries / "folder.desktop");
        fs::create_symlink("/dev/zero", entries / "endless.desktop");
        fs::create_symlink("endless.desktop", entries / "link.desktop");
        ASSERT_EQ(::mkfifo((entries / "pipe.desktop").c_str(), 0600), 0);
        folder.write("data/applications/giant.desktop", "");
        fs::resize_file(entries / "giant.desktop", std::uintmax_t{1} << 32);
        // A program whose list of processes is a pipe.
        fs::copy_file(PACELET_BIN_DIR "/pacelet", folder.path() / "bin/pacelet");
        ASSERT_EQ(::mkfifo(path("share/pacelet/processes.json").c_str(), 0600), 0);
    }

    bool hasMachineFolder() const {
        const fs::directory_iterator entries{folder.path() / "tmp"};
        return std::any_of(begin(entries), end(entries), [](const fs::directory_entry& entry) {
            return entry.path().filename().string().starts_with("pacelet-mac-");
        });
    }

    /// What a demonstration ends with that has come up and is then sent `number`.
    std::optional<int> endOfDemo(const std::string& redirections, const Environment& where,
                                 int number) {
        ChildProgram demo{{"/bin/sh", "-c", "exec \"$BIN\"/pacelet-demo quiet " + redirections},
                          where};
        // It makes its machine when it has its display.
        if (!eventually([&] { return hasMachineFolder() || !demo.runs(); }) || !demo.runs()) {
            return demo.status();
        }
        ::kill(demo.pid(), number);
        return demo.end();
    }

    const TemporaryFolder folder;
};

TEST_F(HostileStart, EndsWithAnAnswerOrAClearLine) {
    for (const auto& [platform, script, status, words] : rows<4>("Desktop", "hostile starts")) {
        const std::string line = "cd " + folder.path().string() + "; " + script;
        const std::string out = path("out");
        ChildProgram program{{"/bin/sh", "-c", line}, environment(platform)};
        EXPECT_EQ(program.end(), std::stoi(status)) << script;
        EXPECT_NE(folder.read("out").find(words), std::string::npos)
            << script << ": " << folder.read("out");
        fs::remove(out);
    }
}

TEST_F(HostileStart, LivesWithoutItsStreamsAndLeavesNothingBehind) {
    for (const std::string redirections :
         {"", "2>/dev/full", "2>&-", "0<&- 1>&- 2>&-", ">/dev/full 2>&1"}) {
        for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
            EXPECT_EQ(endOfDemo(redirections, environment("offscreen"), number), 128 + number)
                << redirections;
            EXPECT_FALSE(hasMachineFolder()) << redirections;
        }
    }
}

TEST_F(HostileStart, MeetsADisplayThatStartsOverWhenItIsLeft) {
    const PrivateDisplay display{"640x480x24", PrivateDisplay::WhenEmpty::startsOver};
    if (display.name().empty()) {
        GTEST_SKIP() << "no display server to start";
    }
    Environment where = environment("");
    where.emplace_back("DISPLAY", display.name());
    for (int start = 0; start < 4; ++start) {
        EXPECT_EQ(endOfDemo("", where, SIGTERM), 128 + SIGTERM);
    }
}

TEST_F(HostileStart, RunsOnceWhateverTheRuntimeFolder) {
    folder.write("file", "");
    const std::string deep = path(std::string(90, 'x'));
    fs::create_directories(deep);
    for (const std::string& runtime : {path("file"), deep, path("missing")}) {
        Environment where = environment("offscreen");
        where.emplace_back("XDG_RUNTIME_DIR", runtime);
        ChildProgram first{{PACELET_BIN_DIR "/pacelet"}, where};
        ASSERT_TRUE(eventually([&] {
            const std::string own = path("tmp") + "/pacelet-" + std::to_string(::getuid());
            std::error_code ignored;
            return fs::exists(own + "/window.socket") ||
                   fs::exists(runtime + "/pacelet/window.socket", ignored);
        }));
        ChildProgram second{{PACELET_BIN_DIR "/pacelet"}, where};
        EXPECT_EQ(second.end(), 0) << runtime;
        EXPECT_TRUE(first.runs());
        ::kill(first.pid(), SIGTERM);
        EXPECT_EQ(first.end(), 128 + SIGTERM);
        fs::remove_all(path("tmp"));
        fs::create_directories(path("tmp"));
    }
}

} // namespace
} // namespace pacelet::testing
