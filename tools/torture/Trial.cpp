#include "tools/torture/Trial.h"

#include "Core/Support/Text.h"
#include "Hosts/Posix/Shell.h"
#include "tools/torture/Torture.h"
#include "tools/torture/Watch.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cstdio>
#include <numeric>
#include <utility>

namespace pacelet::torture {

namespace {

/// Of a process in which something did not hold; others are those of signals.
constexpr int statusBroken = 100;
constexpr std::string_view brokenMark = "BROKEN ";
constexpr std::string_view pressesMark = "PRESSES ";

void tell(std::string_view line) {
    fmt::print("{}\n", line);
    std::fflush(stdout);
}

Presses pressesIn(std::string_view told) {
    Presses presses;
    forEachLine(told, [&](std::string_view line) {
        if (line.starts_with(pressesMark)) {
            line.remove_prefix(pressesMark.size());
            const std::size_t blank = std::min(line.find(' '), line.size());
            const auto times = parseInteger<int>(line.substr(0, blank));
            presses.emplace(line.substr(blank), times.value_or(0));
        }
    });
    return presses;
}

} // namespace

int play(std::uint64_t seed, const Places& places) {
    const auto steps = stepsOf(seed);
    try {
        Torture torture{seed};
        for (const std::size_t place : places) {
            // Told beforehand, too, in case that there is no afterwards.
            fmt::print("{:4}  ", place);
            std::fflush(stdout);
            tell(torture.play(steps.at(place)));
        }
        torture.finish();
        for (const auto& [kind, times] : torture.presses()) {
            tell(fmt::format("{}{} {}", pressesMark, times, kind));
        }
        tell(torture.figures());
    } catch (const Broken& broken) {
        fmt::print("\n{}{}\n", brokenMark, broken.what());
        return statusBroken;
    }
    return 0;
}

Places allPlaces(std::uint64_t seed) {
    Places places(stepsOf(seed).size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    return places;
}

Trial tryOut(const std::string& program, std::uint64_t seed, Places places) {
    Shell::Output output = Shell::run(program, {"--play", std::to_string(seed), textOf(places)});
    Trial trial{seed, std::move(places), {}, std::move(output.stdout), {}};
    trial.presses = pressesIn(trial.told);
    if (output.status == statusBroken) {
        const auto begin = trial.told.rfind(brokenMark);
        trial.fault = trial.told.substr(begin, trial.told.find(':', begin) - begin);
    } else if (output.status != 0) {
        trial.fault = fmt::format("ended by signal {}", output.status);
        trial.told += "\n" + output.stderr;
    }
    return trial;
}

Trial shortest(const std::string& program, Trial trial) {
    for (std::size_t length = trial.places.size(); length > 0; length /= 2) {
        // From the end, where most of it is what was never reached.
        for (std::size_t end = trial.places.size(); end > 0;) {
            const std::size_t begin = end > length ? end - length : 0;
            Places fewer = trial.places;
            fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(begin),
                        fewer.begin() + static_cast<std::ptrdiff_t>(end));
            Trial without = tryOut(program, trial.seed, std::move(fewer));
            if (without.fault == trial.fault) {
                trial = std::move(without);
            }
            end = begin;
        }
    }
    return trial;
}

std::string textOf(const Places& places) {
    return fmt::format("{}", fmt::join(places, ","));
}

Places placesFrom(std::string_view text) {
    Places places;
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(','), text.size());
        if (const auto place = parseInteger<std::size_t>(text.substr(0, comma))) {
            places.push_back(*place);
        }
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return places;
}

} // namespace pacelet::torture
