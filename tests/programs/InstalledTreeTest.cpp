#include "Core/Platform/Log.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/DesktopEntry.h"
#include "Hosts/Linux/User/AutostartEntry.h"
#include "Hosts/Posix/Shell.h"
#include "tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace pacelet {
namespace {

namespace fs = std::filesystem;

/// The name that the desktop knows the program by.
const std::string id{logSubsystem};

/// What `cmake --install` lays down, in a folder that the build has never heard of.
class InstalledTree : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = new testing::TemporaryFolder;
        const auto output = Shell::run(
            PACELET_CMAKE, {"--install", PACELET_BUILD_DIR, "--prefix", folder->path().string()});
        ASSERT_EQ(output.status, 0) << output.stderr;
    }
    static void TearDownTestSuite() {
        delete folder;
        folder = nullptr;
    }

    static std::string path(const std::string& name) { return (folder->path() / name).string(); }

    /// Runs a program of the tree where there is neither a display nor anything of the user's.
    static Shell::Output run(std::vector<std::string> command) {
        command.front() = path("bin/" + command.front());
        command.insert(command.begin(), {"-i", "HOME=" + path("home"), "LC_ALL=C.UTF-8"});
        return Shell::run("/usr/bin/env", command);
    }

    static testing::TemporaryFolder* folder;
};

testing::TemporaryFolder* InstalledTree::folder = nullptr;

TEST_F(InstalledTree, ItsProgramsRunFromThere) {
    const auto answer = run({"pacelet"});
    EXPECT_EQ(answer.status, 0) << answer.stderr;
    EXPECT_TRUE(answer.stdout.starts_with("Status: ")) << answer.stdout;
    EXPECT_NE(answer.stdout.find("There is no display here."), std::string::npos);

    const auto version = run({"pacelet", "--version"});
    EXPECT_EQ(version.status, 0);
    ASSERT_TRUE(version.stdout.starts_with("Pacelet ")) << version.stdout;
    const std::string released =
        "<release version=\"" + version.stdout.substr(8, version.stdout.size() - 9) + '"';
    EXPECT_NE(folder->read("share/metainfo/" + id + ".metainfo.xml").find(released),
              std::string::npos)
        << released;

    const auto report = run({"pacelet-report", "--scenario", "spotlight-stuck"});
    EXPECT_EQ(report.status, 0) << report.stderr;
    EXPECT_NE(report.stdout.find("Spotlight"), std::string::npos) << report.stdout;

    const auto demo = run({"pacelet-demo", "spotlight-stuck"});
    EXPECT_EQ(demo.status, 1);
    EXPECT_NE(demo.stderr.find("there is no display here"), std::string::npos) << demo.stderr;
}

TEST_F(InstalledTree, TheDesktopFindsProgramAndIconsByOneName) {
    const auto entry =
        Linux::parseDesktopEntry(folder->read("share/applications/" + id + ".desktop"));
    ASSERT_TRUE(entry);
    EXPECT_TRUE(fs::exists(path("bin/" + entry->exec)));
    EXPECT_EQ(entry->icon, id);
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        const std::string square = std::to_string(size) + 'x' + std::to_string(size);
        const std::string png =
            folder->read("share/icons/hicolor/" + square + "/apps/" + id + ".png");
        ASSERT_GT(png.size(), 24U) << square;
        // Width and height, most significant byte first, follow signature and head of the first
        // chunk.
        const std::string length{'\0', '\0', static_cast<char>(size / 256),
                                 static_cast<char>(size % 256)};
        EXPECT_EQ(png.substr(16, 8), length + length) << square;
    }
    EXPECT_NE(folder->read("share/icons/hicolor/scalable/apps/" + id + ".svg").find("<svg"),
              std::string::npos);
}

TEST_F(InstalledTree, TheEntryForTheLoginStartsTheSameProgram) {
    const std::string program = path("bin/pacelet");
    Linux::AutostartEntry login{path("home/.config"), program};
    ASSERT_TRUE(login.registerProgram());
    const std::string file = "home/.config/autostart/" + id + ".desktop";
    const auto atLogin = Linux::parseDesktopEntry(folder->read(file));
    const auto inMenu =
        Linux::parseDesktopEntry(folder->read("share/applications/" + id + ".desktop"));
    ASSERT_TRUE(atLogin && inMenu);
    EXPECT_EQ(atLogin->exec, '"' + program + "\" --hidden");
    EXPECT_EQ(lastPathComponent(program), inMenu->exec);
    EXPECT_EQ(atLogin->name, inMenu->name);
    EXPECT_EQ(atLogin->icon, inMenu->icon);
}

TEST_F(InstalledTree, TheDesktopsOwnToolsAcceptItsFiles) {
    const std::string login = path("home/.config/autostart/" + id + ".desktop");
    Linux::AutostartEntry{path("home/.config"), path("bin/pacelet")}.registerProgram();
    const std::vector<std::string> commands[] = {
        {"/usr/bin/desktop-file-validate", path("share/applications/" + id + ".desktop")},
        {"/usr/bin/desktop-file-validate", login},
        {"/usr/bin/appstreamcli", "validate", "--no-net",
         path("share/metainfo/" + id + ".metainfo.xml")},
    };
    for (const auto& command : commands) {
        if (::access(command.front().c_str(), X_OK) != 0) {
            GTEST_SKIP() << "not installed: " << command.front();
        }
        const auto output = Shell::run(command.front(), {command.begin() + 1, command.end()});
        EXPECT_EQ(output.status, 0) << output.stdout << output.stderr;
        EXPECT_EQ(output.stdout.find("warning"), std::string::npos) << output.stdout;
    }
}

/// A module that is missing leaves its user with an empty window.
TEST(Packages, BringEveryModuleThatTheScreensImport) {
    const fs::path source = PACELET_SOURCE_DIR;
    const auto textOf = [](const fs::path& path) {
        std::ostringstream text;
        text << std::ifstream{path}.rdbuf();
        return text.str();
    };
    std::set<std::string> packages;
    const std::regex import{R"((?:^|\n)import (Qt[\w.]*))"};
    for (const auto& file : fs::recursive_directory_iterator{source / "PaceletApp"}) {
        const std::string text = file.path().extension() == ".qml" ? textOf(file.path()) : "";
        for (std::sregex_iterator at{text.begin(), text.end(), import}, end; at != end; ++at) {
            std::string module = asciiLowercased((*at)[1].str());
            std::ranges::replace(module, '.', '-');
            packages.insert("qml6-module-" + module);
        }
    }
    EXPECT_GE(packages.size(), 3U);
    const std::string built = textOf(source / "scripts/packages.txt");
    const std::string shipped = textOf(source / "cmake/PaceletPackage.cmake");
    for (const std::string& package : packages) {
        const std::regex whole{package + "[\\s)]"};
        EXPECT_TRUE(std::regex_search(built, whole)) << package;
        EXPECT_TRUE(std::regex_search(shipped, whole)) << package;
    }
}

} // namespace
} // namespace pacelet
