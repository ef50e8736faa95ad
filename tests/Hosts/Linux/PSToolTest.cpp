#include "Hosts/Linux/PSTool.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Sampling/AppGrouper.h"
#include "Core/Sampling/PSParser.h"
#include "tests/Support/FakeKernel.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
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
    std::uint64_t reapedTicks = 0;
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
                                        " 0 0 0 0 " + std::to_string(process.cpuTicks) + " 0 " +
                                        std::to_string(process.reapedTicks) + " 0 20 0 1 0 " +
                                        std::to_string(process.startTicks) + " 0 25 0 " +
                                        std::to_string(process.startCode) + " 0 0");
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

/// Three generations; each look is two seconds after the one before.
TEST_F(PSToolTest, CountsWhatChildrenUsedOnce) {
    auto look = [&, uptime = 1000.0](auto... changes) mutable {
        (changes(), ...);
        upFor(uptime += 2);
        std::map<std::int32_t, std::pair<double, double>> figures;
        for (const ProcessSample& sample : table()) {
            figures[sample.pid] = {sample.cpuTime, sample.psCPU};
        }
        return figures;
    };
    const auto runs = [&](std::int32_t pid, std::int32_t ppid, std::uint64_t own,
                          std::uint64_t reaped, std::uint64_t start = 10'000) {
        return [=, this] {
            put(pid, {.ppid = ppid, .startTicks = start, .cpuTicks = own, .reapedTicks = reaped});
        };
    };
    const auto ends = [&](std::int32_t pid) { return [=, this] { remove(pid); }; };
    using Figures = std::map<std::int32_t, std::pair<double, double>>;

    // What was reaped before the first look is long past.
    EXPECT_EQ(look(runs(1, 0, 100, 7'000), runs(5, 1, 100, 90'000), runs(6, 5, 2'000, 50)).at(5),
              (std::pair{1.0, 0.1}));
    // Children that came and went between two looks count with their parent.
    EXPECT_EQ(look(runs(5, 1, 110, 90'190)).at(5), (std::pair{3.0, 100.0}));
    // A child that was seen ends: only what it did since then counts with its parent.
    EXPECT_EQ(look(ends(6), runs(5, 1, 110, 90'190 + 2'050 + 40)).at(5), (std::pair{3.4, 20.0}));
    // The parent was looked at just before it reaped the child, and pays with the next look.
    look(runs(7, 5, 3'000, 0));
    EXPECT_EQ(look(ends(7)).at(5), (std::pair{3.4, 0.0}));
    EXPECT_EQ(look(runs(5, 1, 110, 92'280 + 3'010)).at(5), (std::pair{3.5, 5.0}));
    // A newborn's own short-lived children are recent too.
    EXPECT_EQ(look(runs(8, 5, 60, 140, 101'350)).at(8), (std::pair{2.0, 100.0}));
    // Parent and child end together, and an ancestor gets the time of both.
    look(runs(9, 8, 4'000, 0));
    const Figures last = look(ends(9), ends(8), runs(5, 1, 110, 95'290 + 4'200 + 2));
    EXPECT_EQ(last.at(5), (std::pair{3.52, 1.0}));
    EXPECT_EQ(last.at(1), (std::pair{1.0, 0.0}));
}

TEST_F(PSToolTest, ANewProcessShowsNoMoreThanItCouldUse) {
    const auto share = [&] { return table().back().psCPU; };
    put(3, {.startTicks = 99'960, .cpuTicks = 50}); // half a second of work, read late
    EXPECT_EQ(share(), 5) << "the first look goes back ten seconds";
    upFor(1003);
    put(4, {.startTicks = 100'298, .cpuTicks = 3});
    EXPECT_EQ(share(), 1) << "its part of the three seconds since the last look";
    upFor(1003.1);
    put(5, {.startTicks = 100'308, .cpuTicks = 10});
    EXPECT_EQ(share(), 10);
}

TEST_F(PSToolTest, KeepsAbsurdFiguresInTheLine) {
    put(1, {.executable = "/a", .cpuTicks = std::numeric_limits<std::uint64_t>::max()});
    put(2, {.executable = "/b", .startTicks = 200'000, .cpuTicks = 5}); // starts in the future
    put(3, {.executable = "/c\n    9     9     0 root 0:00.00 1 0.0 /fake"});
    put(4, {.comm = "x\ny"});
    const auto samples = table();
    ASSERT_EQ(samples.size(), 4U);
    EXPECT_GT(samples[0].cpuTime, 1e15);
    EXPECT_EQ(samples[1].psCPU, 0.5);
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

/// Digits count up what is otherwise one name.
std::string withoutCount(std::string_view name) {
    std::string plain;
    for (const char character : name) {
        const bool isDigit = character >= '0' && character <= '9';
        if (!isDigit || !plain.ends_with('0')) {
            plain += isDigit ? '0' : character;
        }
    }
    return plain;
}

TEST_F(PSToolTest, PrintsKernelThreadsAsTheCatalogKnowsThem) {
    std::int32_t pid = 1;
    for (const auto& [comm] : testing::rows<1>("Linux", "threads of the kernel")) {
        put(++pid, {.comm = comm, .isKernelThread = true});
    }
    const ProcessCatalog catalog{CatalogFile::read(PACELET_RESOURCES "/processes.json")};
    std::vector<std::string> shown;
    for (const ProcessSample& sample : table()) {
        shown.push_back(withoutCount(sample.path));
        EXPECT_FALSE(catalog.explain(sample.name(), sample.path, {}).isFallback) << sample.path;
    }
    for (const CatalogEntry& entry : catalog.entries) {
        for (const std::string& prefix : entry.match.pathPrefixes) {
            const auto begins = [&](const std::string& name) {
                return name.starts_with(withoutCount(prefix));
            };
            EXPECT_TRUE(prefix.starts_with('/') || std::ranges::any_of(shown, begins)) << prefix;
        }
    }
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
    const std::string script = proc.write("bin/tweaks", "#!/bin/sh\n").string();
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

    // Renewed on the disk while it runs.
    process.executable += " (deleted)";
    put(6, process);
    EXPECT_EQ(pathOf(6), "/Applications/Tweaks.app/Contents/MacOS/python3");
}

TEST_F(PSToolTest, NamesAScriptByItself) {
    const std::string script = proc.write("bin/meld", "#! /usr/bin/env python3\n").string();
    fs::permissions(script, fs::perms::owner_all);
    proc.write("applications/meld.desktop",
               "[Desktop Entry]\nType=Application\nName=Meld\nExec=" + script + "\n");
    put(5,
        {.executable = "/usr/bin/python3",
         .commandLine = {("python3" + std::string(1, '\0') + script).c_str(), 8 + script.size()}});
    put(6, {.executable = "/usr/bin/python3", .commandLine = "python3 /no/such/script"});
    EXPECT_EQ(pathOf(5), "/Applications/Meld.app/Contents/MacOS/meld");
    EXPECT_EQ(pathOf(6), "/usr/bin/python3");
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
