// What we show of real programs against what the kernel settles with their parent in the end.

#include "Core/Sampling/CPUMeter.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Hosts/Linux/LinuxHost.h"
#include "tests/Support/Eventually.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace pacelet::Linux {
namespace {

using namespace std::chrono_literals;

/// A child that runs `work`, in a process group of its own, and never longer than the test.
class Worker {
public:
    explicit Worker(const std::function<void()>& work)
        : pid_{::fork()} {
        if (pid_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::setpgid(0, 0);
            work();
            ::_exit(0);
        }
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() { end(); }

    pid_t pid() const { return pid_; }

    /// It and its children stand still until the end.
    void rest() const { ::kill(-pid_, SIGSTOP); }

    /// Ends it and answers the processor time of it and of all whom it has waited for, in seconds.
    double end() {
        rusage usage{};
        if (pid_ > 0) {
            ::kill(pid_, SIGTERM);
            ::kill(-pid_, SIGCONT);
            ::wait4(pid_, nullptr, 0, &usage);
            ::kill(-pid_, SIGKILL);
            pid_ = -1;
        }
        const auto seconds = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
        };
        return seconds(usage.ru_utime) + seconds(usage.ru_stime);
    }

private:
    pid_t pid_;
};

void burn(double seconds) {
    const std::clock_t begin = std::clock();
    while (static_cast<double>(std::clock() - begin) < seconds * CLOCKS_PER_SEC) {
    }
}

/// Children of a few milliseconds, one after the other, and beside them one that is seen for a
/// while, until we are told to end.
void storm() {
    static volatile std::sig_atomic_t told = 0;
    ::signal(SIGTERM, [](int) { told = 1; });
    const auto beget = [](double seconds) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::signal(SIGTERM, SIG_DFL);
            burn(seconds);
            ::_exit(0);
        }
        return child;
    };
    while (told == 0) {
        const pid_t slow = beget(0.4);
        for (int quick = 0; quick < 60 && told == 0; ++quick) {
            ::waitpid(beget(0.004), nullptr, 0);
        }
        told != 0 ? ::kill(slow, SIGKILL) : 0;
        ::waitpid(slow, nullptr, 0);
    }
}

/// All in seconds of processor time; `elapsed` in those of the clock.
struct StormAccount {
    double elapsed = 0;
    double used = 0;          ///< as the kernel settles it in the end
    double shown = 0;         ///< of the one who makes the storm, and of its children
    double shownOfWorker = 0; ///< of the former
    double mostOfAChild = 0;  ///< percent of one core
};

StormAccount watchAStorm() {
    LinuxHost host;
    const auto look = [&] { return PSProcessSource{host.tools(), host.clock()}.sample(); };
    StormAccount account;
    Snapshot before = look();
    const TimePoint begin = before.takenAt;
    Worker worker{storm};
    for (int round = 0; round < 3; ++round) {
        std::this_thread::sleep_for(1s);
        if (round == 2) {
            worker.rest(); // what it did after the last look would be in the kernel's figure only
        }
        Snapshot now = look();
        const double elapsed = (now.takenAt - before.takenAt).count();
        for (const ProcessUsage& usage : CPUMeter::usage(before, now, [](auto) { return 0; })) {
            const double seconds = usage.cpuPercent / 100 * elapsed;
            if (usage.pid == worker.pid()) {
                account.shownOfWorker += seconds;
                account.shown += seconds;
            } else if (usage.ppid == worker.pid()) {
                account.mostOfAChild = std::max(account.mostOfAChild, usage.cpuPercent);
                account.shown += seconds;
                round == 2 ? ::kill(usage.pid, SIGKILL) : 0; // else it goes on before it ends
            }
        }
        before = std::move(now);
    }
    account.elapsed = (before.takenAt - begin).count();
    account.used = worker.end();
    return account;
}

TEST(Accounting, AStormOfChildrenCountsOnceAndWithWhoMakesThem) {
    // On a crowded machine a look can take so long that it ends up in another state than it began.
    constexpr double tolerance = 0.02;
    StormAccount account = watchAStorm();
    const auto error = [&] { return (account.shown - account.used) / account.elapsed; };
    for (int more = 0; more < 2 && std::abs(error()) > tolerance; ++more) {
        account = watchAStorm();
    }
    EXPECT_NEAR(error(), 0, tolerance) << account.used << " s in " << account.elapsed << " s";
    EXPECT_GT(account.shownOfWorker, account.used / 4) << "most come and go between two looks";
    EXPECT_LE(account.mostOfAChild, 101) << "one thread";
}

/// Whether `address` was mapped; then every page of it is touched.
bool touch(void* address, std::size_t bytes) {
    constexpr std::size_t page = 4096;
    for (std::size_t at = 0; address != MAP_FAILED && at < bytes; at += page) {
        static_cast<volatile char*>(address)[at] = static_cast<char>(at / page);
    }
    return address != MAP_FAILED;
}

/// Writes as much into a memfd that nobody maps, and leaves it open.
void fill(std::size_t bytes) {
    const int memory = ::memfd_create("unmapped", MFD_CLOEXEC);
    const std::string piece(1 << 20, 'x');
    for (std::size_t at = 0; at < bytes; at += piece.size()) {
        (void)!::write(memory, piece.data(), piece.size());
    }
}

/// Holds so much anonymous memory together with two children, so much of a memfd with one of
/// them, and so much in one that is open in all three and mapped nowhere; in namespaces of its own
/// where the system lets it, and under another name.
void holdTogether(std::size_t anonymousBytes, std::size_t sharedBytes, std::size_t unmappedBytes,
                  int ready) {
    ::prctl(PR_SET_NAME, "renamed");
    ::unshare(CLONE_NEWUSER | CLONE_NEWPID);
    touch(
        ::mmap(nullptr, anonymousBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0),
        anonymousBytes);
    fill(unmappedBytes);
    const int memory = ::memfd_create("held", MFD_CLOEXEC);
    if (::ftruncate(memory, static_cast<off_t>(sharedBytes)) != 0) {
        return;
    }
    for (int child = 0; child < 2; ++child) {
        if (::fork() == 0) {
            ::pause();
        }
        touch(::mmap(nullptr, child == 0 ? sharedBytes : 1, PROT_READ | PROT_WRITE, MAP_SHARED,
                     memory, 0),
              child == 0 ? sharedBytes : 1);
    }
    (void)!::write(ready, "", 1);
    ::pause();
}

TEST(Accounting, MemoryThatSeveralShareCountsOnce) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer's own memory counts, too";
#endif
    constexpr std::int64_t anonymous = 150 << 20;
    constexpr std::int64_t shared = 90 << 20;
    constexpr std::int64_t unmapped = 60 << 20;
    constexpr std::int64_t all = anonymous + shared + unmapped;
    LinuxHost host;
    std::array<int, 2> ready{};
    ASSERT_EQ(::pipe2(ready.data(), O_CLOEXEC), 0);
    Worker worker{[&] { holdTogether(anonymous, shared, unmapped, ready[1]); }};
    ::close(ready[1]);
    char sign = 0;
    ASSERT_EQ(::read(ready[0], &sign, 1), 1);
    ::close(ready[0]);
    std::vector<std::int32_t> members;
    for (const ProcessSample& sample :
         PSProcessSource{host.tools(), host.clock()}.sample().processes) {
        if (::getpgid(sample.pid) == worker.pid()) {
            members.push_back(sample.pid);
        }
    }
    ASSERT_EQ(members.size(), 3U);
    const auto shown = [&] {
        return std::accumulate(members.begin(), members.end(), std::int64_t{0},
                               [&](std::int64_t sum, std::int32_t pid) {
                                   return sum + host.kernel().physFootprint(pid).value_or(0);
                               });
    };
    const std::int64_t atOnce = shown();
    EXPECT_GE(atOnce, (anonymous + shared) * 97 / 100);
    EXPECT_LE(atOnce, all * 103 / 100) << "what is held unmapped may still be looked for";
    EXPECT_TRUE(testing::eventually([&] { return std::abs(shown() - all) <= all * 3 / 100; }))
        << shown();
}

} // namespace
} // namespace pacelet::Linux
