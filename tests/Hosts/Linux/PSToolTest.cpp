#include "Hosts/Linux/PSTool.h"
#include "Core/Sampling/AppGrouper.h"
#include "Core/Sampling/PSParser.h"
#include "tests/Support/FakeKernel.h"
#include "tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace pacelet::Linux {
namespace {

namespace fs = std::filesystem;
using pacelet::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct FakeProcess {
    std::string comm = "prog";
    std::string executable; ///< no link when empty
    std::string commandLine;
    std::string cgroup = "0::/\n";
    std::int32_t ppid = 1;
    std::uint64_t startTicks = 10'000; ///< hundredths of a second since boot
    std::uint64_t cpuTicks = 0;
    std::uint64_t startCode = 4096;
    char state = 'S';
    bool isKernelThread = false;
};

/// A `/proc` of our own making.
class PSToolTest : public ::testing::Test {
protected:
    PSToolTest() { upFor(1000); }

    void upFor(double seconds) { clock.monotonic = MonotonicTime{Seconds{seconds}}; }
    void put(std::int32_t pid, const FakeProcess& process) {
        const std::string folder = "proc/" + std::to_string(pid) + '/';
        proc.write(folder + "stat", std::to_string(pid) + " (" + process.comm + ") " +
                                        process.state + ' ' + std::to_string(process.ppid) +
                                        " 1 1 0 -1 " + (process.isKernelThread ? "2097152" : "0") +
                                        " 0 0 0 0 " + std::to_string(process.cpuTicks) +
                                        " 0 0 0 20 0 1 0 " + std::to_string(process.startTicks) +
                                        " 0 25 0 " + std::to_string(process.startCode) + " 0 0");
        proc.write(folder + "cmdline", process.commandLine);
        proc.write(folder + "cgroup", process.cgroup);
        fs::remove(proc.path() / (folder + "exe"));
        if (!process.executable.empty()) {
            fs::create_symlink(process.executable, proc.path() / (folder + "exe"));
        }
    }
    void remove(std::int32_t pid) { fs::remove_all(proc.path() / "proc" / std::to_string(pid)); }

    std::vector<ProcessSample> table() {
        return PSParser::parse(
            tool.run({"-axo", "pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm="}).stdout);
    }
    std::string commandLines() { return tool.run({"-axo", "pid=,rss=,args="}).stdout; }
    std::string pathOf(std::int32_t pid) {
        for (const ProcessSample& sample : table()) {
            if (sample.pid == pid) {
                return sample.path;
            }
        }
        return "(none)";
    }

    TemporaryFolder proc;
    pacelet::testing::FakeClock clock;
    DesktopPlaces places{{(proc.path() / "applications").string()}, {}, {}, "/home/ann"};
    fs::path made = proc.write("proc/meminfo", "");
    PSTool tool{(proc.path() / "proc").string(), places, clock};
};

TEST_F(PSToolTest, PrintsTheMacsColumns) {
    put(42, {.comm = "two words",
             .executable = "/opt/x/Two Words",
             .ppid = 7,
             .cpuTicks = 45'012}); // 450.12 s of the last 900 s
    const Shell::Output output = tool.run({"-axo", "pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm="});
    EXPECT_EQ(output.status, 0);
    EXPECT_THAT(output.stdout, HasSubstr("   42     7 "));
    EXPECT_THAT(output.stdout,
                ::testing::EndsWith("   7:30.12    " + std::to_string(25 * ::getpagesize() / 1024) +
                                    "  50.0 /opt/x/Two Words\n"));
    const auto samples = table();
    ASSERT_EQ(samples.size(), 1U);
    EXPECT_EQ(samples[0].uid, ::getuid());
    EXPECT_DOUBLE_EQ(samples[0].cpuTime, 450.12);
}

TEST_F(PSToolTest, KeepsAbsurdFiguresInTheLine) {
    put(1, {.executable = "/a", .cpuTicks = std::numeric_limits<std::uint64_t>::max()});
    put(2, {.executable = "/b", .startTicks = 200'000, .cpuTicks = 5}); // starts in the future
    put(3, {.executable = "/c\n    9     9     0 root 0:00.00 1 0.0 /fake"});
    put(4, {.comm = "x\ny"});
    const auto samples = table();
    ASSERT_EQ(samples.size(), 4U);
    EXPECT_GT(samples[0].cpuTime, 1e15);
    EXPECT_EQ(samples[1].psCPU, 0);
    EXPECT_THAT(samples[2].path, ::testing::StartsWith("/c?    9"));
    EXPECT_EQ(samples[3].path, "x?y");
}

TEST_F(PSToolTest, NamesWhatItMayNotFollow) {
    put(1, {.comm = "nginx", .commandLine = {"/usr/sbin/nginx\0-g\0x\0", 21}});
    put(2, {.comm = "renderer", .commandLine = "/opt/x/prog --type=renderer --more"});
    put(3, {.comm = "sshd", .commandLine = "sshd: ann@pts/0"});
    put(4, {.comm = "kworker/0:1-events", .isKernelThread = true});
    put(5, {.comm = "kworker/R-rcu_gp", .isKernelThread = true});
    put(6, {.comm = "ksoftirqd/0", .isKernelThread = true});
    put(7, {.comm = "ended", .executable = "/never/read", .state = 'Z'});
    put(8, {.comm = "old", .executable = "/usr/bin/old (deleted)"});
    const std::vector<std::string> expected{"/usr/sbin/nginx", "/opt/x/prog",      "sshd",
                                            "kworker:0:1",     "kworker:R-rcu_gp", "ksoftirqd:0",
                                            "ended",           "/usr/bin/old"};
    const auto samples = table();
    ASSERT_EQ(samples.size(), expected.size());
    for (std::size_t row = 0; row < samples.size(); ++row) {
        EXPECT_EQ(samples[row].path, expected[row]);
    }
    put(4, {.comm = "kworker/0:1+other", .isKernelThread = true});
    EXPECT_EQ(pathOf(4), "kworker:0:1") << "a worker keeps its name whatever it works on";
}

TEST_F(PSToolTest, NoticesAReusedPidAndAnotherProgram) {
    const FakeProcess before{.comm = "prog", .executable = "/opt/a/prog"};
    put(9, before);
    EXPECT_EQ(pathOf(9), "/opt/a/prog");

    FakeProcess after = before;
    after.executable = "/opt/b/prog";
    put(9, after);
    EXPECT_EQ(pathOf(9), "/opt/a/prog") << "nothing says that it changed: not read again";

    after.startTicks = 20'000;
    put(9, after);
    EXPECT_EQ(pathOf(9), "/opt/b/prog") << "another process under the old pid";

    after.executable = "/opt/c/other";
    after.comm = "other";
    put(9, after);
    EXPECT_EQ(pathOf(9), "/opt/c/other") << "it runs a program of another name";

    after.executable = "/opt/d/other";
    after.startCode = 8192;
    put(9, after);
    EXPECT_EQ(pathOf(9), "/opt/d/other") << "it runs another program of the same name";

    after.state = 'Z';
    after.startCode = 0;
    after.executable.clear();
    put(9, after);
    EXPECT_EQ(pathOf(9), "/opt/d/other") << "what has ended keeps its name";

    remove(9);
    EXPECT_EQ(pathOf(9), "(none)");
}

TEST_F(PSToolTest, FoldsAnApplicationsProcessesIntoABundle) {
    const std::string program = proc.write("opt/web/web", "\x7f"
                                                          "ELF")
                                    .string();
    fs::permissions(program, fs::perms::owner_all);
    proc.write("applications/web.desktop",
               "[Desktop Entry]\nType=Application\nName=Web\nExec=" + program + "\n");
    // The child has the lower pid, as after the pids have wrapped around.
    put(50, {.executable = program,
             .commandLine = program + " --extension-process",
             .ppid = 60,
             .startTicks = 20'000});
    put(60, {.executable = program,
             .commandLine = {(program + '\0' + "--url").c_str(), program.size() + 6}});
    put(70, {.comm = "web-thing", .executable = "/usr/bin/cat", .ppid = 60});
    EXPECT_EQ(pathOf(60), "/Applications/Web.app/Contents/MacOS/web");
    EXPECT_EQ(pathOf(50), "/Applications/Web.app/Contents/Frameworks/web");
    EXPECT_EQ(pathOf(70), "/usr/bin/cat");
    EXPECT_THAT(commandLines(),
                HasSubstr(" /Applications/Web.app/Contents/Frameworks/web --extension-process\n"));
    EXPECT_THAT(commandLines(), HasSubstr(" /Applications/Web.app/Contents/MacOS/web --url\n"));
    EXPECT_THAT(commandLines(), HasSubstr(" (cat)\n"));

    // The main program goes; its helper is adopted and stays a helper, even when looked at anew.
    remove(60);
    put(50, {.executable = program, .ppid = 1, .startTicks = 20'000});
    fs::last_write_time(proc.path() / "applications",
                        fs::file_time_type::clock::now() + std::chrono::seconds{5});
    EXPECT_EQ(pathOf(50), "/Applications/Web.app/Contents/Frameworks/web");
}

TEST_F(PSToolTest, WaitsForTheDesktopToMoveAnApplicationIntoItsScope) {
    const std::string script = proc.write("bin/tweaks", "#!/usr/bin/python3\n").string();
    fs::permissions(script, fs::perms::owner_all);
    proc.write("applications/tweaks.desktop",
               "[Desktop Entry]\nType=Application\nName=Tweaks\nExec=" + script + "\n");
    FakeProcess process{.executable = "/usr/bin/python3", .startTicks = 100'000};
    put(5, process);
    upFor(1000.5);
    EXPECT_EQ(pathOf(5), "/usr/bin/python3");
    process.cgroup = "0::/app.slice/app-gnome-tweaks-5.scope\n";
    put(5, process);
    upFor(1003.5);
    EXPECT_EQ(pathOf(5), "/Applications/Tweaks.app/Contents/MacOS/python3");
}

TEST_F(PSToolTest, RefusesWhatItDoesNotKnow) {
    const std::vector<std::vector<std::string>> unknown{
        {}, {"-axo"}, {"-axo", "pid="}, {"-axo", "pid=,rss=,args=", "x"}};
    for (const std::vector<std::string>& arguments : unknown) {
        const Shell::Output output = tool.run(arguments);
        EXPECT_EQ(output.status, 1);
        EXPECT_EQ(output.stdout, "");
        EXPECT_THAT(output.stderr, HasSubstr("usage"));
    }
    PSTool nowhere{"/no/such/folder", places, clock};
    EXPECT_EQ(nowhere.run({"-axo", "pid=,rss=,args="}).status, 1);
}

} // namespace
} // namespace pacelet::Linux
