#include "Core/Inspectors/SpotlightAdvisor.h"

#include "Core/Inspectors/TreeWalk.h"
#include "tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pacelet {
namespace {

using SpotlightAdvisor::allocatedSize;
using SpotlightAdvisor::heavyFolders;

std::int64_t blocksOf(const std::filesystem::path& path) {
    struct stat facts {};
    EXPECT_EQ(::lstat(path.c_str(), &facts), 0);
    return static_cast<std::int64_t>(facts.st_blocks) * 512;
}

TEST(SpotlightAdvisor, AddsUpBlocksOfRegularFilesAlone) {
    const testing::TemporaryFolder folder;
    const auto root = folder.path() / "tree";
    const std::string content(10'000, 'x');
    std::int64_t expected = 0;
    for (const char* name : {"a", ".hidden/b", "deep/er/c", "Package.app/Contents/d", "\xFF\n/e"}) {
        expected += blocksOf(folder.write(std::string{"tree/"} + name, content));
    }
    EXPECT_GE(expected, 5 * 10'000);
    EXPECT_EQ(allocatedSize(root), expected);

    folder.write("outside/big", std::string(100'000, 'x'));
    std::filesystem::create_symlink("../outside/big", root / "file link");
    std::filesystem::create_symlink("../outside", root / "folder link");
    std::filesystem::create_symlink(".", root / "loop");
    ASSERT_EQ(::mkfifo((root / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(allocatedSize(root), expected);

    const auto sparse = folder.write("tree/sparse", "");
    std::filesystem::resize_file(sparse, std::uintmax_t{1} << 33);
    EXPECT_EQ(allocatedSize(root), expected + blocksOf(sparse));
    EXPECT_LT(blocksOf(sparse), 1 << 20);

    std::filesystem::create_hard_link(root / "a", root / "second name");
    EXPECT_EQ(allocatedSize(root), expected + blocksOf(sparse) + blocksOf(root / "a"));

    EXPECT_EQ(allocatedSize(folder.path() / "missing"), 0);
    EXPECT_EQ(allocatedSize(root / "a"), 0) << "a file has nothing below it";
    EXPECT_EQ(allocatedSize(root / "folder link"), 0);
}

TEST(SpotlightAdvisor, PassesOverUnreadableFolders) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "nothing is unreadable to this user";
    }
    const testing::TemporaryFolder folder;
    folder.write("closed/a", std::string(10'000, 'x'));
    const auto open = folder.write("open/b", std::string(10'000, 'x'));
    std::filesystem::permissions(folder.path() / "closed", std::filesystem::perms::none);
    EXPECT_EQ(allocatedSize(folder.path()), blocksOf(open));
    std::filesystem::permissions(folder.path() / "closed", std::filesystem::perms::owner_all);
}

/// Makes folders with long names one in another, each with a file, and with a folder that has a
/// file on either side of the next. Answers the number of files.
int makeDeepTree(const std::filesystem::path& root, int depth) {
    const std::string next(100, 'd');
    int at = ::open(root.c_str(), O_RDONLY | O_DIRECTORY);
    int files = 0;
    for (int level = 0; level < depth; ++level) {
        for (const std::string& name : {std::string{"c"}, next, std::string{"e"}}) {
            ::mkdirat(at, name.c_str(), 0700);
        }
        for (const char* name : {"f", "c/f", "e/f"}) {
            const int file = ::openat(at, name, O_WRONLY | O_CREAT, 0600);
            files += ::write(file, "x", 1) == 1 ? 1 : 0;
            ::close(file);
        }
        const int below = ::openat(at, next.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(at);
        at = below;
    }
    ::close(at);
    return files;
}

TEST(SpotlightAdvisor, WalksDeeperThanPathsAreLong) {
    const testing::TemporaryFolder folder;
    const auto shallow = folder.write("f", "x");
    const std::int64_t each = blocksOf(shallow);
    const int files = makeDeepTree(folder.path(), 120);
    ASSERT_EQ(files, 360);
    rlimit usual{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &usual), 0);
    const rlimit few{64, usual.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    EXPECT_EQ(allocatedSize(folder.path()), files * each) << "not all of them open at once";
    ::setrlimit(RLIMIT_NOFILE, &usual);
}

TEST(SpotlightAdvisor, LeavesNoTreeBehindAFolderThatIsMoved) {
    const testing::TemporaryFolder folder;
    std::string deep = "tree/";
    for (int level = 0; level < 40; ++level) {
        deep += "d/";
    }
    folder.write(deep + "a/f", "x");
    folder.write(deep + "b/f", "x");
    int visits = 0;
    walkRegularFiles(folder.path() / "tree", {}, [&](const struct stat&) {
        ++visits;
        for (const char* name : {"a", "b"}) {
            std::filesystem::rename(folder.path() / deep / name, folder.path() / name);
        }
    });
    EXPECT_EQ(visits, 1) << "the other one is no longer in the tree";
}

TEST(SpotlightAdvisor, StopsWhenAsked) {
    const testing::TemporaryFolder folder;
    folder.write("Parallels/a", std::string(10'000, 'x'));
    std::stop_source stop;
    EXPECT_EQ(heavyFolders(folder.path(), 1, stop.get_token()).size(), 1U);
    stop.request_stop();
    EXPECT_EQ(allocatedSize(folder.path(), stop.get_token()), 0);
    EXPECT_TRUE(heavyFolders(folder.path(), 0, stop.get_token()).empty());
}

TEST(SpotlightAdvisor, NamesHeavyCandidatesInTheirOrder) {
    const testing::TemporaryFolder home;
    EXPECT_TRUE(heavyFolders(home.path(), 0).empty());
    const std::string xcode = "Library/Developer/Xcode/DerivedData";
    const std::int64_t small = blocksOf(home.write(xcode + "/a/b", std::string(9000, 'x')));
    const std::int64_t large = blocksOf(home.write(".orbstack/c", std::string(90'000, 'x')));
    home.write("Parallels", "a file of that name");
    const HeavyFolder build{home.path() / xcode, "Xcode build data", small};
    const HeavyFolder orb{home.path() / ".orbstack", "OrbStack data", large};
    const HeavyFolder file{home.path() / "Parallels", "Parallels virtual machines", 0};
    EXPECT_EQ(heavyFolders(home.path(), 0), (std::vector{build, orb, file}));
    EXPECT_EQ(heavyFolders(home.path(), small), (std::vector{build, orb}));
    EXPECT_EQ(heavyFolders(home.path(), small + 1), (std::vector{orb}));
}

} // namespace
} // namespace pacelet
