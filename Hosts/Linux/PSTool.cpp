#include "Hosts/Linux/PSTool.h"

#include "Core/Platform/ProcessSample.h"
#include "Hosts/Linux/Proc/ShownText.h"

#include <algorithm>
#include <fmt/compile.h>
#include <fmt/format.h>
#include <utility>

namespace pacelet::Linux {

namespace {

const std::vector<std::string> tableArguments{"-axo",
                                              "pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm="};
const std::vector<std::string> commandLineArguments{"-axo", "pid=,rss=,args="};

Shell::Output failure(std::string message) {
    return {1, "", std::move(message)};
}

/// Minutes, which may exceed 59, seconds and hundredths.
struct CPUTime {
    std::int64_t minutes;
    int seconds;
    int hundredths;
};

CPUTime cpuTime(std::int64_t hundredths) {
    return {hundredths / 6000, static_cast<int>(hundredths / 100 % 60),
            static_cast<int>(hundredths % 100)};
}

/// Percent of one core since the last table, which was shown `sinceShown` ago. A process that was
/// not in it did all its work since then, or in its life if that is longer. `sweepTime` went by
/// while all were looked at.
double recentPercent(const ProcessRow& row, Seconds sinceShown, Seconds sweepTime) {
    const Seconds span =
        row.shownHundredths ? sinceShown : std::max(sinceShown, row.age + sweepTime);
    return static_cast<double>(row.cpuHundredths - row.shownHundredths.value_or(0)) / span.count();
}

/// What a first table looks back on, where processes are so old: a program that is just starting up
/// works hard for a moment, which says little.
constexpr Seconds firstSpan{10};

/// Times are told in hundredths: a share of less than this would be guesswork.
constexpr Seconds shortestSpan{1};

/// A command line whose program is named by the path under which it appears.
std::string shownCommandLine(const KnownProcess& process, std::string_view commandLine) {
    if (commandLine.empty()) {
        return fmt::format("({})", executableName(process.path));
    }
    if (process.path == process.executable) {
        return shownArguments(commandLine);
    }
    std::string_view rest = commandLine;
    constexpr std::string_view separators{" \0", 2};
    rest.remove_prefix(rest.starts_with(process.executable)
                           ? process.executable.size()
                           : std::min(rest.size(), rest.find_first_of(separators)));
    return process.path + shownArguments(rest);
}

} // namespace

PSTool::PSTool(const std::string& procFolder, DesktopPlaces places, Clock& clock)
    : clock_{clock},
      processes_{procFolder, std::move(places)} {}

Shell::Output PSTool::run(const std::vector<std::string>& arguments) {
    const bool isTable = arguments == tableArguments;
    if (!isTable && arguments != commandLineArguments) {
        return failure(fmt::format("ps: unknown arguments\nusage: ps {}\n       ps {}\n",
                                   fmt::join(tableArguments, " "),
                                   fmt::join(commandLineArguments, " ")));
    }
    const std::lock_guard lock{mutex_};
    if (!processes_.isReadable()) {
        return failure("ps: the process table cannot be read\n");
    }
    return {0, isTable ? table() : commandLines(), ""};
}

std::vector<AppProcess> PSTool::appProcesses(std::uint32_t uid) {
    const std::lock_guard lock{mutex_};
    std::vector<AppProcess> found;
    for (const ProcessRow& row : processes_.read(clock_.monotonicNow().time_since_epoch())) {
        const KnownProcess& process = *row.process;
        if (row.uid == uid && process.role != AppRole::none && !process.hasEnded) {
            found.push_back({{row.pid, process.startTime},
                             row.ppid,
                             process.role,
                             process.appID,
                             process.path});
        }
    }
    return found;
}

std::vector<std::optional<ProcessOrigin>>
PSTool::origins(std::span<const ProgramQuestion> questions) {
    const std::lock_guard lock{mutex_};
    std::vector<std::optional<ProcessOrigin>> origins;
    origins.reserve(questions.size());
    for (const ProgramQuestion& question : questions) {
        const KnownProcess* const process = processes_.known(question.pid);
        if (process == nullptr || process->path != question.path) {
            origins.emplace_back();
            continue;
        }
        const KnownProcess* const parent = processes_.known(process->ppid);
        const bool leads = parent == nullptr || parent->unit != process->unit;
        origins.emplace_back(ProcessOrigin{process->executable, process->starter, process->appID,
                                           leads ? process->unit : std::string{}, process->reason});
    }
    return origins;
}

std::optional<CountedMemory> PSTool::memory(std::int32_t pid) {
    const std::lock_guard lock{mutex_};
    return processes_.memory(pid);
}

std::string PSTool::table() {
    std::string text;
    text.reserve(usualSize_);
    const Seconds begin = clock_.monotonicNow().time_since_epoch();
    const auto& rows = processes_.read(begin);
    // From end to end, as who reads two tables reckons: looks differ in how long they take.
    const Seconds end = clock_.monotonicNow().time_since_epoch();
    const Seconds sinceShown = shownAt_ ? std::max(shortestSpan, end - *shownAt_) : firstSpan;
    const Seconds sweepTime = end - begin;
    for (const ProcessRow& row : rows) {
        const CPUTime time = cpuTime(row.cpuHundredths);
        fmt::format_to(std::back_inserter(text),
                       FMT_COMPILE("{:>5} {:>5} {:>5} {:<8} {:>3}:{:02}.{:02} {:>6} {:>5.1f} {}\n"),
                       row.pid, row.ppid, row.uid, users_.nameOf(row.uid), time.minutes,
                       time.seconds, time.hundredths, row.residentKilobytes,
                       recentPercent(row, sinceShown, sweepTime), row.process->path);
    }
    processes_.markShown();
    shownAt_ = end;
    usualSize_ = text.size() + text.size() / 8;
    return text;
}

std::string PSTool::commandLines() {
    std::string text;
    text.reserve(usualSize_);
    const Seconds uptime = clock_.monotonicNow().time_since_epoch();
    for (const ProcessRow& row : processes_.read(uptime)) {
        if (const auto commandLine = processes_.commandLine(row.pid)) {
            fmt::format_to(std::back_inserter(text), FMT_COMPILE("{:>5} {:>6} {}\n"), row.pid,
                           row.residentKilobytes, shownCommandLine(*row.process, *commandLine));
        }
    }
    usualSize_ = text.size() + text.size() / 8;
    return text;
}

} // namespace pacelet::Linux
