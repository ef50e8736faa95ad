// The live process table against a bare loop over /proc and against the system's own ps, with so
// many processes running. The time is processor time, that of child processes included, so that the
// three can be compared on a machine that is busy with other things too.

#include "Hosts/Linux/LinuxHost.h"
#include "Hosts/Linux/Proc/Footprints.h"
#include "Hosts/Linux/Proc/HeldMemory.h"
#include "Hosts/Posix/Shell.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <csignal>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace pacelet::Linux {
namespace {

const std::vector<std::string> tableArguments{"-axo",
                                              "pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm="};

/// Processes that do nothing but wait. They end with this object, and at the latest with us.
class Sleepers {
public:
    /// Grows or shrinks to `count`.
    void hold(std::size_t count) {
        while (pids_.size() > count) {
            endLast();
        }
        const pid_t parent = ::getpid();
        while (pids_.size() < count) {
            const pid_t child = ::fork();
            if (child < 0) {
                return;
            }
            if (child == 0) {
                ::prctl(PR_SET_PDEATHSIG, SIGKILL);
                while (::getppid() == parent) {
                    ::pause();
                }
                ::_exit(0);
            }
            pids_.push_back(child);
        }
    }
    Sleepers() = default;
    Sleepers(const Sleepers&) = delete;
    Sleepers& operator=(const Sleepers&) = delete;
    ~Sleepers() { hold(0); }

private:
    void endLast() {
        ::kill(pids_.back(), SIGKILL);
        ::waitpid(pids_.back(), nullptr, 0);
        pids_.pop_back();
    }

    std::vector<pid_t> pids_;
};

Sleepers& sleepers() {
    static Sleepers all;
    return all;
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// Processor time of this process and of the children that it has waited for.
double processorTime() {
    double sum = 0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        ::getrusage(who, &usage);
        sum += seconds(usage.ru_utime) + seconds(usage.ru_stime);
    }
    return sum;
}

/// Measures `work`, which answers how many processes it saw, with so many sleepers.
template<typename Work>
void measure(benchmark::State& state, Work&& work) {
    sleepers().hold(static_cast<std::size_t>(state.range(0)));
    work();
    std::size_t processes = 0;
    for ([[maybe_unused]] auto _ : state) {
        const double begin = processorTime();
        processes = work();
        state.SetIterationTime(processorTime() - begin);
    }
    state.SetComplexityN(static_cast<std::int64_t>(processes));
    state.counters["per_process"] =
        benchmark::Counter(static_cast<double>(processes) * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

std::size_t lines(const Shell::Output& output) {
    return static_cast<std::size_t>(std::count(output.stdout.begin(), output.stdout.end(), '\n'));
}

void oursText(benchmark::State& state) {
    LinuxHost host;
    measure(state, [&] { return lines(host.tools().run("/bin/ps", tableArguments)); });
}

/// Of a host that knows no process yet.
void oursFirstText(benchmark::State& state) {
    measure(state, [] {
        LinuxHost host;
        return lines(host.tools().run("/bin/ps", tableArguments));
    });
}

void spawnedPS(benchmark::State& state) {
    measure(state, [] { return lines(Shell::run("/bin/ps", tableArguments)); });
}

/// The least that the table costs when nothing is remembered: no parsing, no text.
std::size_t bareLoop(int proc) {
    std::size_t processes = 0;
    std::array<char, 4096> buffer;
    std::array<char, 300> path;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder{::opendir("/proc"), ::closedir};
    while (const dirent* entry = ::readdir(folder.get())) {
        if (entry->d_name[0] < '0' || entry->d_name[0] > '9') {
            continue;
        }
        std::snprintf(path.data(), path.size(), "%s/stat", entry->d_name);
        const int file = ::openat(proc, path.data(), O_RDONLY | O_CLOEXEC);
        if (file < 0) {
            continue;
        }
        benchmark::DoNotOptimize(::read(file, buffer.data(), buffer.size()));
        ::close(file);
        struct stat facts {};
        benchmark::DoNotOptimize(::fstatat(proc, entry->d_name, &facts, 0));
        std::snprintf(path.data(), path.size(), "%s/exe", entry->d_name);
        benchmark::DoNotOptimize(::readlinkat(proc, path.data(), buffer.data(), buffer.size()));
        ++processes;
    }
    return processes;
}

void bareLoopOverProc(benchmark::State& state) {
    const int proc = ::open("/proc", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    measure(state, [&] { return bareLoop(proc); });
    ::close(proc);
}

void counts(benchmark::internal::Benchmark* benchmark) {
    for (const std::int64_t count : {150, 650, 2150, 5150}) {
        benchmark->Arg(count);
    }
    benchmark->Unit(benchmark::kMicrosecond)->UseManualTime()->Complexity(benchmark::oN);
}

BENCHMARK(oursText)->Apply(counts);
BENCHMARK(bareLoopOverProc)->Apply(counts);
BENCHMARK(oursFirstText)->Apply(counts);
BENCHMARK(spawnedPS)->Apply(counts);

std::vector<std::int32_t> allProcesses() {
    std::vector<std::int32_t> pids;
    ReadBuffer buffer;
    FolderReader{"/proc"}.listNumbers(pids, buffer);
    return pids;
}

/// What every tick asks.
void footprints(benchmark::State& state) {
    LinuxHost host;
    measure(state, [&] {
        const auto pids = allProcesses();
        for (const std::int32_t pid : pids) {
            benchmark::DoNotOptimize(host.kernel().physFootprint(pid));
        }
        return pids.size();
    });
}

/// What the background does after the machine's shared memory has moved.
void heldMemory(benchmark::State& state) {
    const FolderReader proc{"/proc"};
    measure(state, [&] {
        benchmark::DoNotOptimize(readHeldMemory(proc, Footprints::largeBytes));
        return allProcesses().size();
    });
}

BENCHMARK(footprints)->Apply(counts);
BENCHMARK(heldMemory)->Apply(counts);

} // namespace
} // namespace pacelet::Linux
