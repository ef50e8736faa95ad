#include "Core/Sampling/MemoryStats.h"
#include "Core/Sampling/PSParser.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Hosts/Linux/LinuxHost.h"
#include "Hosts/Posix/Shell.h"
#include "tests/Support/ChildProgram.h"
#include "tests/Support/TemporaryFolder.h"

#include <array>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

namespace pacelet::Linux {
namespace {

std::map<std::int32_t, ProcessSample> byPid(std::vector<ProcessSample> samples) {
    std::map<std::int32_t, ProcessSample> table;
    for (ProcessSample& sample : samples) {
        table.emplace(sample.pid, std::move(sample));
    }
    return table;
}

std::map<std::int32_t, ProcessSample> sample(LinuxHost& host) {
    return byPid(PSProcessSource{host.tools(), host.clock()}.sample().processes);
}

TEST(LiveHost, FindsThisProcessAndItsWork) {
    LinuxHost host;
    const auto before = sample(host);
    ASSERT_TRUE(before.contains(::getpid()));
    const ProcessSample& self = before.at(::getpid());
    EXPECT_EQ(self.ppid, ::getppid());
    EXPECT_EQ(self.uid, ::geteuid());
    EXPECT_EQ(self.path, std::filesystem::read_symlink("/proc/self/exe").string());
    EXPECT_GT(self.rssBytes, 1 << 20);

    const std::clock_t begin = std::clock();
    while (std::clock() - begin < CLOCKS_PER_SEC / 20) {
    }
    const double spent = sample(host).at(::getpid()).cpuTime - self.cpuTime;
    EXPECT_GE(spent, 0.03) << "50 ms of work, counted in hundredths";
    EXPECT_LE(spent, 5);
}

TEST(LiveHost, AgreesWithTheSystemsOwnPS) {
    LinuxHost host;
    const auto before = sample(host);
    const auto theirs = byPid(PSParser::parse(
        Shell::run("/bin/ps", {"-axo", "pid=,ppid=,uid=,user:32=,time=,rss=,%cpu=,comm="}).stdout));
    const auto after = sample(host);
    std::size_t compared = 0;
    for (const auto& [pid, ours] : after) {
        const auto earlier = before.find(pid);
        const auto their = theirs.find(pid);
        if (earlier == before.end() || their == theirs.end() || earlier->second != ours) {
            continue; // came, went or did something meanwhile
        }
        ++compared;
        EXPECT_EQ(ours.ppid, their->second.ppid) << ours.path;
        EXPECT_EQ(ours.uid, their->second.uid) << ours.path;
        EXPECT_EQ(ours.user, their->second.user) << ours.path;
        // The kernel's cheap count of pages trails behind the exact one on each processor.
        EXPECT_NEAR(static_cast<double>(ours.rssBytes), static_cast<double>(their->second.rssBytes),
                    16 << 20)
            << ours.path;
        // Theirs is in whole seconds.
        EXPECT_NEAR(ours.cpuTime, their->second.cpuTime, 1) << ours.path;
    }
    EXPECT_GE(compared, 1U);
}

TEST(LiveHost, NoticesAChildThatRunsAnotherProgram) {
    LinuxHost host;
    std::array<int, 2> go{};
    ASSERT_EQ(::pipe(go.data()), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        char byte = 0;
        // Ends with us: then there is nothing more to read.
        ::close(go[1]);
        if (::read(go[0], &byte, 1) == 1) {
            ::execl("/bin/sleep", "sleep", "60", nullptr);
        }
        ::_exit(1);
    }
    const std::string ours = sample(host).at(child).path;
    EXPECT_EQ(ours, sample(host).at(::getpid()).path);
    ASSERT_EQ(::write(go[1], "x", 1), 1);
    EXPECT_TRUE(pacelet::testing::eventually(
        [&] { return sample(host).at(child).path.ends_with("sleep"); }));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(go[0]);
    ::close(go[1]);
    EXPECT_FALSE(sample(host).contains(child));
}

TEST(LiveHost, HeldFilesBelongToTheProcessAndNotToItsNumber) {
    const FolderReader proc{"/proc"};
    ReadBuffer buffer;
    for (const bool mayHold : {true, false}) {
        pacelet::testing::ChildProgram child{{"/bin/sleep", "60"}, {}};
        ProcessFiles files;
        for (int look = 0; look < 2; ++look) {
            const auto glance = files.look(proc, child.pid(), mayHold, buffer);
            ASSERT_TRUE(glance);
            EXPECT_EQ(glance->uid, ::geteuid());
            EXPECT_EQ(parseProcStat(glance->stat)->pid, child.pid());
        }
        ::kill(child.pid(), SIGKILL);
        EXPECT_EQ(child.end(), -SIGKILL);
        EXPECT_FALSE(files.look(proc, child.pid(), mayHold, buffer));
        // Another process has the number now, as far as these files can tell.
        EXPECT_EQ(parseProcStat(files.look(proc, ::getpid(), mayHold, buffer)->stat)->pid,
                  ::getpid());
    }
}

TEST(LiveHost, ReadsPlausibleFigures) {
    LinuxHost host;
    Kernel& kernel = host.kernel();
    const auto before = kernel.physFootprint(::getpid());
    ASSERT_TRUE(before);
    std::vector<char> grown(32 << 20, 'x');
    EXPECT_GE(*kernel.physFootprint(::getpid()), *before + (30 << 20));
    EXPECT_EQ(grown.back(), 'x');

    const MemoryBreakdown split = MemoryStats::read(kernel);
    EXPECT_GT(split.app, 0);
    EXPECT_GT(split.free, 0);
    // Each of the five is cut to whole pages.
    EXPECT_NEAR(
        static_cast<double>(split.app + split.wired + split.compressed + split.cached + split.free),
        static_cast<double>(split.total), 5.0 * static_cast<double>(kernel.pageSize()));
    EXPECT_GE(kernel.activeProcessorCount(), 1);
    const auto boot = readSysctl<BootTimeRecord>(kernel, "kern.boottime");
    ASSERT_TRUE(boot);
    EXPECT_NEAR(unixTime(host.clock().now()) - static_cast<double>(boot->tv_sec),
                kernel.systemUptime().count(), 5);
    const auto root = kernel.volumeCapacities("/");
    ASSERT_TRUE(root && root->total && root->availableForImportantUsage);
    EXPECT_LE(*root->availableForImportantUsage, *root->total);
}

TEST(LiveHost, NamesScriptsAndGroupsAnAppImage) {
    using pacelet::testing::ChildProgram;
    pacelet::testing::TemporaryFolder folder;
    const std::string script = (folder.path() / "wait.sh").string();
    folder.write("wait.sh", "#!/bin/sh\nwhile :; do sleep 0.1; done\n");
    const std::filesystem::path mount = "/tmp/.mount_PaceleAbCdEf";
    std::filesystem::create_directories(mount);
    std::filesystem::copy_file("/bin/sleep", mount / "AppRun",
                               std::filesystem::copy_options::overwrite_existing);
    std::ofstream{mount / "tool.desktop"} << "[Desktop Entry]\nType=Application\nName=My Tool\n";

    const ChildProgram sh{{"/bin/sh", script}, {}};
    const ChildProgram boxed{{(mount / "AppRun").string(), "100"}, {}};
    LinuxHost host;
    EXPECT_TRUE(pacelet::testing::eventually([&] { return sample(host)[sh.pid()].path == script; }))
        << sample(host)[sh.pid()].path;
    const std::string path = "/Applications/My Tool.app/Contents/MacOS/AppRun";
    EXPECT_TRUE(pacelet::testing::eventually([&] {
        return sample(host)[boxed.pid()].path == path;
    })) << sample(host)[boxed.pid()].path;
    EXPECT_EQ(host.whyThere(boxed.pid(), path),
              "It runs inside of the same AppImage, Flatpak or Snap.");
    const auto facts = host.knowledge().about(std::vector{ProgramQuestion{sh.pid(), script}});
    EXPECT_EQ(facts.front()->entryKind,
              "Script for " + std::filesystem::canonical("/bin/sh").filename().string());
    std::filesystem::remove_all(mount);
}

} // namespace
} // namespace pacelet::Linux
