// Measures the program with its window, from outside: how soon it shows something, what it holds,
// and what it costs while it runs. window-figures [SECONDS] watches it for so long each time.

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "tests/programs/support/DesktopSession.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <deque>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <thread>

namespace {

using namespace pacelet;
using namespace pacelet::testing;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::uint32_t ground = 0x111116; ///< of the main window
constexpr std::uint32_t fresh = 0x6EE7B7;  ///< of the dot beside "checked 0s ago"
constexpr int starts = 15;
constexpr std::chrono::seconds settling{10};

/// The processor time that a process has used.
Milliseconds cpuTime(pid_t pid) {
    clockid_t clock{};
    timespec time{};
    if (::clock_getcpuclockid(pid, &clock) != 0 || ::clock_gettime(clock, &time) != 0) {
        return {};
    }
    return std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
}

/// A moment of a start: since its beginning, by the clock on the wall and by the processor.
struct Moment {
    Milliseconds wall{};
    Milliseconds cpu{};
};

struct Start {
    Moment firstFrame;
    Moment firstAnswer;
};

std::optional<SeenWindow> mainWindow(const DesktopSession& desktop) {
    const auto windows = desktop.windows();
    return windows.empty() ? std::nullopt : std::optional{windows.front()};
}

/// Looks a thousand times a second, so that nothing is seen late.
Moment waitFor(const ChildProgram& pacelet, Clock::time_point begin,
               const std::function<bool()>& isSeen) {
    while (!isSeen() && Clock::now() - begin < std::chrono::seconds{20}) {
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    return {Clock::now() - begin, cpuTime(pacelet.pid())};
}

Start measureStart(const DesktopSession& desktop) {
    // The window of the start before goes a little later than its program.
    eventually([&] { return !mainWindow(desktop); });
    const auto begin = Clock::now();
    const ChildProgram pacelet = desktop.start("pacelet");
    Start start;
    std::optional<SeenWindow> window;
    start.firstFrame = waitFor(pacelet, begin, [&] {
        window = mainWindow(desktop);
        return window &&
               desktop.find(ground, {window->area.x + 220, window->area.y + 4, 2, 2}).has_value();
    });
    start.firstAnswer = waitFor(pacelet, begin, [&] {
        // The dot stands in the window's upper right part.
        window = mainWindow(desktop);
        return window && desktop
                             .find(fresh, {window->area.x + window->area.width / 2,
                                           window->area.y + 30, window->area.width / 2 - 1, 60})
                             .has_value();
    });
    return start;
}

void printStarts(const DesktopSession& desktop) {
    std::vector<Start> all;
    for (int count = 0; count < starts; ++count) {
        all.push_back(measureStart(desktop));
    }
    const auto print = [&](const char* what, Moment Start::*moment) {
        std::vector<double> wall;
        std::vector<double> cpu;
        for (const Start& start : all) {
            wall.push_back((start.*moment).wall.count());
            cpu.push_back((start.*moment).cpu.count());
        }
        std::ranges::sort(wall);
        std::ranges::sort(cpu);
        fmt::print("{}: {:.0f} ms at best, {:.0f} ms in the middle; processor {:.0f} ms\n", what,
                   wall.front(), wall[wall.size() / 2], cpu.front());
    };
    print("first frame", &Start::firstFrame);
    print("first answer", &Start::firstAnswer);
}

/// One line of "smaps_rollup", in MB.
double memory(pid_t pid, const std::string& key) {
    std::ifstream lines{fmt::format("/proc/{}/smaps_rollup", pid)};
    double kilobytes = 0;
    for (std::string word; lines >> word;) {
        if (word == key) {
            lines >> kilobytes;
        }
    }
    return kilobytes / 1024;
}

void printMemory(pid_t pid, const char* state) {
    fmt::print("memory {}: {:.1f} MB resident, {:.1f} MB proportional, {:.1f} MB of its own\n",
               state, memory(pid, "Rss:"), memory(pid, "Pss:"), memory(pid, "Pss_Anon:"));
}

void printLoad(pid_t pid, const char* state, std::chrono::seconds span) {
    const Milliseconds before = cpuTime(pid);
    std::this_thread::sleep_for(span);
    const Milliseconds used = cpuTime(pid) - before;
    fmt::print("{}: {:.3f}% of a core\n", state, 100 * used / Milliseconds{span});
    std::fflush(stdout);
}

std::size_t processCount() {
    return static_cast<std::size_t>(std::ranges::count_if(
        sortedNames("/proc"), [](const std::string& name) { return name[0] <= '9'; }));
}

void watch(const DesktopSession& desktop, std::size_t processes, std::chrono::seconds span) {
    std::deque<ChildProgram> sleepers;
    while (processCount() < processes) {
        for (std::size_t missing = processes - processCount(); missing > 0; --missing) {
            sleepers.emplace_back(std::vector<std::string>{"sleep", "1000"}, Environment{});
        }
    }
    // What is under the pointer moves as it changes; the figures are of a window left alone.
    desktop.point(0, 0);
    ChildProgram pacelet = desktop.start("pacelet");
    std::this_thread::sleep_for(settling);
    fmt::print("\n{} processes\n", processCount());
    printMemory(pacelet.pid(), "open");
    printLoad(pacelet.pid(), "open", span);
    if (const auto window = mainWindow(desktop)) {
        desktop.close(window->id);
    }
    std::this_thread::sleep_for(settling);
    printMemory(pacelet.pid(), "closed");
    printLoad(pacelet.pid(), "closed", span);
}

} // namespace

int main(int argc, char** argv) {
    const int seconds = argc > 1 ? parseInteger<int>(argv[1]).value_or(60) : 60;
    const DesktopSession desktop;
    if (!desktop.isUp()) {
        fmt::print(stderr, "window-figures: Xvfb and jwm are needed\n");
        return 1;
    }
    printStarts(desktop);
    for (const std::size_t processes : {std::size_t{150}, std::size_t{2150}}) {
        watch(desktop, processes, std::chrono::seconds{seconds});
    }
    return 0;
}
