#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

namespace fs = std::filesystem;
using pacelet::testing::TemporaryFolder;

/// A small desktop below one folder.
class DesktopCatalogTest : public ::testing::Test {
protected:
    void program(const std::string& name, const std::string& content = "\x7f"
                                                                       "ELF") {
        fs::permissions(folder.write(name, content), fs::perms::owner_all);
    }
    void entry(const std::string& file, const std::string& lines) {
        folder.write(file, "[Desktop Entry]\nType=Application\n" + lines);
    }
    std::string path(const std::string& name) const { return (folder.path() / name).string(); }

    TemporaryFolder folder;
    DesktopPlaces places{
        {path("user"), path("system"), path("missing")}, {path("bin")}, {"GNOME"}, path("home")};
};

TEST(DesktopPlaces, HasAHomeWithoutTheVariable) {
    const std::string home = DesktopPlaces::fromEnvironment().home;
    for (const char* odd : {"", "relative"}) {
        ::setenv("HOME", odd, 1);
        EXPECT_TRUE(DesktopPlaces::fromEnvironment().home.starts_with('/')) << odd;
        EXPECT_NE(DesktopPlaces::fromEnvironment().home, "/") << "nothing is written there";
    }
    ::setenv("HOME", home.c_str(), 1);
}

TEST_F(DesktopCatalogTest, FindsWhatEntriesReallyStart) {
    program("opt/big/big");
    program("bin/tool");
    program("bin/start", "#!/bin/sh\n");
    fs::create_symlink(path("opt/big/big"), path("bin/big"));
    entry("system/big.desktop", "Name=Big\nExec=big --flag %U\n");
    entry("system/kde/start.desktop", "Name=Start\nExec=\"" + path("bin/start") + "\"\n");
    entry("system/tool.desktop", "Name=Tool\nExec=tool\nTerminal=true\n");
    entry("system/gone.desktop", "Name=Gone\nExec=no-such-program\n");
    entry("system/try.desktop", "Name=Try\nExec=big\nTryExec=no-such-program\n");
    entry("system/script.desktop", "Name=Script\nExec=sh -c big\n");
    entry("system/nameless.desktop", "Exec=big\n");
    entry("system/hidden.desktop", "Name=Hidden\nExec=big\n");
    entry("user/hidden.desktop", "Name=Hidden\nExec=big\nHidden=true\n");
    program("bin/py", "#! /usr/bin/env python3\n");
    entry("system/py.desktop", "Name=Py\nExec=py\n");
    folder.write("system/broken.desktop", "\xff\0\n[");
    folder.write("system/readme.txt", "[Desktop Entry]\n");

    const auto apps = readDesktopApps(places);
    ASSERT_EQ(apps.size(), 3U);
    EXPECT_EQ(apps[0],
              (DesktopApp{"big", "Big", path("opt/big/big"), path("opt/big"), false, 1, "--flag"}));
    EXPECT_EQ(apps[1], (DesktopApp{"kde-start", "Start", "", ""}))
        << "a start script in a shared folder is no program";
    EXPECT_EQ(apps[2].program, path("bin/py")) << "one that goes on running is";
}

TEST_F(DesktopCatalogTest, NoticesChangesAndReadsOnlyThen) {
    program("bin/tool");
    entry("system/sub/one.desktop", "Name=One\nExec=tool\n");
    DesktopCatalog catalog{places};
    const auto first = catalog.current();
    EXPECT_NE(first->byID("sub-one"), nullptr);
    EXPECT_EQ(catalog.current(), first);

    // A folder that did not exist, and one below another.
    for (const char* file : {"missing/two.desktop", "system/sub/three.desktop"}) {
        const auto before = catalog.current();
        entry(file, "Name=New\nExec=tool\n");
        // Coarse clocks of file systems: make sure that the change shows.
        fs::last_write_time(fs::path{path(file)}.parent_path(),
                            fs::file_time_type::clock::now() + std::chrono::seconds{5});
        EXPECT_NE(catalog.current(), before) << file;
    }
    EXPECT_EQ(catalog.current()->apps().size(), 3U);
    fs::remove_all(path("system"));
    EXPECT_EQ(catalog.current()->apps().size(), 1U);
}

} // namespace
} // namespace pacelet::Linux
