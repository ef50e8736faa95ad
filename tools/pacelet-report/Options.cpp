#include "tools/pacelet-report/Options.h"

#include "Core/Support/Text.h"

#include <fmt/format.h>

namespace pacelet::report {

namespace {

/// Walks over the arguments, one at a time.
class Arguments {
public:
    explicit Arguments(std::span<const std::string_view> arguments) : rest_{arguments} {}

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
    const auto seconds = parseFloat(text);
    if (!seconds || *seconds <= 0) {
        throw UsageError{fmt::format("--seconds needs a number above 0, not \"{}\"", text)};
    }
    return Seconds{*seconds};
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
        } else if (argument == "--help") {
            options.help = true;
        } else if (argument == "--seconds") {
            options.seconds = parseSeconds(arguments.valueOf(argument));
            secondsGiven = true;
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
    if (options.laterPSFile.has_value() != secondsGiven) {
        throw UsageError{"--seconds and a second --ps belong together"};
    }
    if (options.scenario && options.psFile) {
        throw UsageError{"--scenario and --ps exclude each other"};
    }
    return options;
}

std::string_view usageText() {
    return R"(Usage: pacelet-report [--json] [--ps FILE [--ps LATER --seconds N]]
       pacelet-report [--json] --scenario NAME

Says in plain English why this machine is slow right now, from two looks at it
three seconds apart.

  --ps FILE     read a captured process table instead: the output of
                ps -axo pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm=
                Given twice, the tables are N seconds apart. What a table does
                not tell (memory pressure, heat, disk) counts as normal.
  --seconds N   seconds between the two tables
  --scenario N  look at a simulated Mac instead; an unknown name lists all names
  --json        print the facts as JSON
  --help        print this text

Exit status: 0 when there is an answer, 1 when the process list of Pacelet
cannot be loaded or the machine cannot be read, 2 when the arguments are wrong
or a file cannot be read.
)";
}

} // namespace pacelet::report
