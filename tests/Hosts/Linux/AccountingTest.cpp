// What we show of real programs against what the kernel settles with their parent in the end.

#include "Core/Sampling/CPUMeter.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Hosts/Linux/LinuxHost.h"
#include "tests/Support/Eventually.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

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

TEST(Accounting, AStormOfChildrenCountsOnceAndWithWhoMakesThem) {
    LinuxHost host;
    const auto look = [&] { return PSProcessSource{host.tools(), host.clock()}.sample(); };
    Snapshot before = look();
    const TimePoint begin = before.takenAt;
    Worker worker{storm};
    double seen = 0;
    double shownOfWorker = 0;
    for (int round = 0; round < 3; ++round) {
        std::this_thread::sleep_for(1s);
        if (round == 2) {
            worker.rest(); // what it did after the last look would be in the kernel's figure only
        }
        Snapshot now = look();
        const double elapsed = (now.takenAt - before.takenAt).count();
        for (const ProcessUsage& usage : CPUMeter::usage(before, now, [](auto) { return 0; })) {
            if (usage.pid == worker.pid() || usage.ppid == worker.pid()) {
                EXPECT_LE(usage.pid == worker.pid() ? 0 : usage.cpuPercent, 101) << "one thread";
                seen += usage.cpuPercent / 100 * elapsed;
                shownOfWorker += usage.pid == worker.pid() ? usage.cpuPercent / 100 * elapsed : 0;
            }
        }
        before = std::move(now);
    }
    const double elapsed = (before.takenAt - begin).count();
    const double used = worker.end();
    EXPECT_GT(shownOfWorker, used / 4) << "most children come and go between two looks";
    EXPECT_NEAR(seen / elapsed, used / elapsed, 0.02) << used << " s used in " << elapsed << " s";
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
#ifdef __SANITIZE_ADDRESS__
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
    std::int64_t seen = 0;
    EXPECT_TRUE(testing::eventually([&] {
        seen = 0;
        int members = 0;
        for (const ProcessSample& sample :
             PSProcessSource{host.tools(), host.clock()}.sample().processes) {
            if (::getpgid(sample.pid) == worker.pid()) {
                seen += host.kernel().physFootprint(sample.pid).value_or(0);
                ++members;
            }
        }
        return members == 3 && std::abs(seen - all) <= all * 3 / 100;
    })) << seen;
}

} // namespace
} // namespace pacelet::Linux
