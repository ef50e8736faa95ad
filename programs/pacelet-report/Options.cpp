#include "programs/pacelet-report/Options.h"

#include "Core/Support/Text.h"

#include <fmt/format.h>

namespace pacelet::report {

namespace {

/// Walks over the arguments, one at a time.
class Arguments {
public:
    explicit Arguments(std::span<const std::string_view> arguments)
        : rest_{arguments} {}

    bool empty() const { return rest_.empty(); }
    std::string_view next() {
        const std::string_view first = rest_.front();
        rest_ = rest_.subspan(1);
        return first;
    }
    std::string_view valueOf(std::string_view option) {
        if (empty()) {
            throw UsageError{fmt::format("{} needs a value", option)};
        }
        return next();
    }

private:
    std::span<const std::string_view> rest_;
};

Seconds parseSeconds(std::string_view text) {
    constexpr double least = 0.1;
    constexpr double most = 1e9;
    const auto seconds = parseFloat(text);
    if (!seconds || *seconds < least || *seconds > most) {
        throw UsageError{
            fmt::format("--seconds needs a number from {} up, not \"{}\"", least, text)};
    }
    return Seconds{*seconds};
}

std::int64_t parseCores(std::string_view text) {
    constexpr std::int64_t most = 65536;
    const auto cores = parseInteger<std::int64_t>(text);
    if (!cores || *cores < 1 || *cores > most) {
        throw UsageError{
            fmt::format("--cores needs a number from 1 to {}, not \"{}\"", most, text)};
    }
    return *cores;
}

std::int64_t parseLooks(std::string_view text) {
    constexpr std::int64_t least = 2;
    constexpr std::int64_t most = 10000;
    const auto looks = parseInteger<std::int64_t>(text);
    if (!looks || *looks < least || *looks > most) {
        throw UsageError{
            fmt::format("--looks needs a number from {} to {}, not \"{}\"", least, most, text)};
    }
    return *looks;
}

/// "24h", "7d" or "90m".
Seconds parseSpan(std::string_view text) {
    constexpr std::int64_t mostMinutes = std::int64_t{31} * 24 * 60;
    const std::string_view number = text.substr(0, text.empty() ? 0 : text.size() - 1);
    const std::size_t unit = text.empty() ? text.npos : std::string_view{"mhd"}.find(text.back());
    const auto count = parseInteger<std::int64_t>(number);
    const std::int64_t minutes = unit == 0 ? 1 : unit == 1 ? 60 : 1440;
    if (unit == text.npos || !count || *count < 1 || *count > mostMinutes / minutes) {
        throw UsageError{fmt::format(
            "--since needs a time of up to 31 days, such as 24h, 7d or 90m, not \"{}\"", text)};
    }
    return Seconds{static_cast<double>(*count * minutes) * 60};
}

void checkTogether(const Options& options, bool secondsGiven) {
    if (options.laterPSFile.has_value() != secondsGiven) {
        throw UsageError{"--seconds and a second --ps belong together"};
    }
    if (options.scenario && options.psFile) {
        throw UsageError{"--scenario and --ps exclude each other"};
    }
    if (options.since && (options.scenario || options.psFile)) {
        throw UsageError{"--since tells of this machine alone"};
    }
    const int machines = int{options.psFile.has_value()} + int{options.scenario.has_value()} +
                         int{options.since.has_value()} + int{options.captureFile.has_value()} +
                         int{options.replayFile.has_value()};
    if ((options.captureFile || options.replayFile) && (machines > 1 || options.why)) {
        throw UsageError{"--capture and --replay stand alone, or with --json"};
    }
    if (options.looks && !options.captureFile) {
        throw UsageError{"--looks needs --capture"};
    }
    if (options.cores && !options.psFile) {
        throw UsageError{"--cores needs --ps"};
    }
    if (options.psFile == "-" && options.laterPSFile == "-") {
        throw UsageError{"standard input can be one table only"};
    }
}

} // namespace

Options parseOptions(std::span<const std::string_view> all) {
    Options options;
    bool secondsGiven = false;
    Arguments arguments{all};
    while (!arguments.empty()) {
        const std::string_view argument = arguments.next();
        if (argument == "--json") {
            options.json = true;
        } else if (argument == "--why") {
            options.why = true;
        } else if (argument == "--help") {
            options.help = true;
        } else if (argument == "--seconds") {
            options.seconds = parseSeconds(arguments.valueOf(argument));
            secondsGiven = true;
        } else if (argument == "--cores") {
            options.cores = parseCores(arguments.valueOf(argument));
        } else if (argument == "--since") {
            options.since = parseSpan(arguments.valueOf(argument));
        } else if (argument == "--capture") {
            options.captureFile = arguments.valueOf(argument);
        } else if (argument == "--replay") {
            options.replayFile = arguments.valueOf(argument);
        } else if (argument == "--looks") {
            options.looks = parseLooks(arguments.valueOf(argument));
        } else if (argument == "--scenario") {
            options.scenario = arguments.valueOf(argument);
        } else if (argument == "--ps" && !options.laterPSFile) {
            auto& file = options.psFile ? options.laterPSFile : options.psFile;
            file = arguments.valueOf(argument);
        } else if (argument == "--ps") {
            throw UsageError{"--ps may stand twice at the most"};
        } else {
            throw UsageError{fmt::format("unknown argument \"{}\"", argument)};
        }
    }
    checkTogether(options, secondsGiven);
    if (options.why && (options.json || options.scenario || options.psFile)) {
        throw UsageError{"--why is for this machine, as text"};
    }
    return options;
}

std::string_view usageText() {
    return R"(Usage: pacelet-report [--json | --why]
       pacelet-report [--json] --ps FILE [--ps LATER --seconds N] [--cores N]
       pacelet-report [--json] --scenario NAME
       pacelet-report [--json] --since TIME
       pacelet-report [--json] --capture FILE [--looks N]
       pacelet-report [--json] --replay FILE

Says in plain English why this machine is slow right now, from two looks at it
three seconds apart.

  --ps FILE     read a captured process table instead, "-" for standard input:
                the output of `ps aux`, of `ps -ef` or, best,
                ps -axo pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm=
                Given twice, the tables are N seconds apart. What a table does
                not tell (memory pressure, heat, disk) is left out.
  --seconds N   seconds between the two tables
  --cores N     processor cores of the machine that the tables come from; without
                them, nothing is said of its load as a whole
  --scenario N  look at a simulated Mac instead; an unknown name lists all names
  --since TIME  tell what slowed this machine down since then instead, such as 24h,
                7d or 90m ago, as far as Pacelet ran and kept its history
  --capture F   keep what this machine answers in a new file, too, for others to look
                at: without the names of people, window titles and command lines
  --looks N     looks to keep, three seconds apart; 10 without it
  --replay F    look at the machine of such a file instead
  --json        print the facts as JSON
  --why         also say why each process of this machine stands in its row
  --help        print this text

Exit status: 0 when there is an answer, 1 when the process list of Pacelet
cannot be loaded, the machine cannot be read or the answer cannot be written,
2 when the arguments are wrong, or a file cannot be read or made.
)";
}

} // namespace pacelet::report
