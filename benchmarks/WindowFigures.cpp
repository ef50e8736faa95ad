// Measures programs with a window, from outside: how soon they show something, what they hold, and
// what they cost while they run. Ours, the barest window of Qt Quick, the task managers of the
// desktops as far as they are installed, and further programs of ours by their paths:
// window-figures [SECONDS [PROGRAM...]] watches each for so long each time.

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "tests/programs/support/DesktopSession.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <deque>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <thread>

namespace {

using namespace pacelet;
using namespace pacelet::testing;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::uint32_t fresh = 0x6EE7B7; ///< of the dot beside "checked 0s ago"
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
    double wall = 0;
    double cpu = 0;
};

struct Candidate {
    std::string path;
    bool isOurs = false;
    std::vector<Moment> firstPixels{};
    std::vector<Moment> firstAnswer{};
};

std::vector<Candidate> candidates(const std::vector<std::string>& more) {
    std::vector<Candidate> all{{"pacelet", true}};
    for (const std::string& path : more) {
        all.push_back({path, true});
    }
    all.push_back({"bare-window", false});
    for (const char* const name :
         {"lxtask", "xfce4-taskmanager", "gnome-system-monitor", "plasma-systemmonitor"}) {
        if (const std::string path = std::string{"/usr/bin/"} + name;
            std::filesystem::exists(path)) {
            all.push_back({path, false});
        }
    }
    return all;
}

std::optional<SeenWindow> mainWindow(const DesktopSession& desktop) {
    const auto windows = desktop.allWindows();
    return windows.empty() ? std::nullopt : std::optional{windows.front()};
}

/// A window that is not drawn yet has one colour, or two where a part of it is.
bool showsSomething(const DesktopSession& desktop) {
    constexpr std::size_t fewColours = 4;
    const auto window = mainWindow(desktop);
    if (!window) {
        return false;
    }
    const Area& area = window->area;
    return desktop.colours({area.x, area.y, std::min(area.width, 400),
                            std::min(area.height, 150)}) > fewColours;
}

/// The dot stands in the window's upper right part.
bool showsAnswer(const DesktopSession& desktop) {
    const auto window = mainWindow(desktop);
    return window && desktop
                         .find(fresh, {window->area.x + window->area.width / 2, window->area.y + 30,
                                       window->area.width / 2 - 1, 60})
                         .has_value();
}

/// Looks a thousand times a second, so that nothing is seen late.
Moment waitFor(const ChildProgram& program, Clock::time_point begin,
               const std::function<bool()>& isSeen) {
    while (!isSeen() && Clock::now() - begin < std::chrono::seconds{20}) {
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    return {Milliseconds{Clock::now() - begin}.count(), cpuTime(program.pid()).count()};
}

void measureStart(const DesktopSession& desktop, Candidate& candidate) {
    // The window of the start before goes a little later than its program.
    eventually([&] { return !mainWindow(desktop); });
    const auto begin = Clock::now();
    const ChildProgram program = desktop.start(candidate.path);
    candidate.firstPixels.push_back(
        waitFor(program, begin, [&] { return showsSomething(desktop); }));
    if (candidate.isOurs) {
        candidate.firstAnswer.push_back(
            waitFor(program, begin, [&] { return showsAnswer(desktop); }));
    }
}

void printMoments(const char* what, std::vector<Moment> all) {
    if (all.empty()) {
        return;
    }
    std::ranges::sort(all, {}, &Moment::cpu);
    const double cpu = all.front().cpu;
    std::ranges::sort(all, {}, &Moment::wall);
    fmt::print("  {}: {:.0f} ms at best, {:.0f} ms in the middle; processor {:.0f} ms\n", what,
               all.front().wall, all[all.size() / 2].wall, cpu);
}

/// One after the other in turn, so that what else the machine does hits all alike.
void printStarts(const DesktopSession& desktop, std::vector<Candidate>& all) {
    for (int count = 0; count < starts; ++count) {
        for (Candidate& candidate : all) {
            measureStart(desktop, candidate);
        }
    }
    for (const Candidate& candidate : all) {
        fmt::print("{}\n", candidate.path);
        printMoments("first pixels", candidate.firstPixels);
        printMoments("first answer", candidate.firstAnswer);
    }
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
    fmt::print("  memory {}: {:.1f} MB resident, {:.1f} MB proportional, {:.1f} MB of its own\n",
               state, memory(pid, "Rss:"), memory(pid, "Pss:"), memory(pid, "Pss_Anon:"));
}

void printLoad(pid_t pid, const char* state, std::chrono::seconds span) {
    const Milliseconds before = cpuTime(pid);
    std::this_thread::sleep_for(span);
    const Milliseconds used = cpuTime(pid) - before;
    fmt::print("  {}: {:.3f}% of a core\n", state, 100 * used / Milliseconds{span});
}

std::size_t processCount() {
    return static_cast<std::size_t>(std::ranges::count_if(
        sortedNames("/proc"), [](const std::string& name) { return name[0] <= '9'; }));
}

void watch(const DesktopSession& desktop, const Candidate& candidate, std::chrono::seconds span) {
    eventually([&] { return !mainWindow(desktop); });
    const ChildProgram program = desktop.start(candidate.path);
    std::this_thread::sleep_for(settling);
    fmt::print("{}, {} processes\n", candidate.path, processCount());
    printMemory(program.pid(), "open");
    printLoad(program.pid(), "open", span);
    if (const auto window = mainWindow(desktop); window && candidate.isOurs) {
        desktop.close(window->id);
        std::this_thread::sleep_for(settling);
        printMemory(program.pid(), "closed");
        printLoad(program.pid(), "closed", span);
    }
}

} // namespace

int main(int argc, char** argv) {
    const int seconds = argc > 1 ? parseInteger<int>(argv[1]).value_or(60) : 60;
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const DesktopSession desktop;
    if (!desktop.isUp()) {
        fmt::print(stderr, "window-figures: Xvfb and jwm are needed\n");
        return 1;
    }
    // Other programs complain of what is missing here.
    std::freopen("/dev/null", "w", stderr);
    // What is under the pointer moves as it changes; the figures are of a window left alone.
    desktop.point(0, 0);
    std::vector<Candidate> all = candidates({argv + std::min(argc, 2), argv + argc});
    printStarts(desktop, all);
    std::deque<ChildProgram> sleepers;
    for (const std::size_t processes : {std::size_t{150}, std::size_t{2150}}) {
        while (processCount() < processes) {
            for (std::size_t missing = processes - processCount(); missing > 0; --missing) {
                sleepers.emplace_back(std::vector<std::string>{"sleep", "10000"}, Environment{});
            }
        }
        for (const Candidate& candidate : all) {
            watch(desktop, candidate, std::chrono::seconds{seconds});
        }
    }
    return 0;
}
