// From the text of ps to the answer, on tables of made-up but Mac-like processes.

#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Core/Sampling/AppGrouper.h"
#include "Core/Sampling/CPUMeter.h"
#include "Core/Sampling/PSParser.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <iterator>
#include <string>

namespace {

using namespace pacelet;

constexpr int processesPerApp = 7; // 2,000 processes make about 300 applications

/// A table of `processes` lines; `seconds` is how long ago the first one was taken.
std::string table(std::int64_t processes, double seconds) {
    std::string text;
    for (std::int64_t index = 0; index < processes; ++index) {
        const std::int64_t app = index / processesPerApp;
        const bool main = index % processesPerApp == 0;
        const double load = index % 97 == 0 ? 0.9 : 0.01;
        fmt::format_to(std::back_inserter(text),
                       "{:5} {:5}   501 ann              {:3}:{:05.2f} {:6} {:5.1f} "
                       "/Applications/Some Application {}.app/Contents/{}\n",
                       index + 100, 1, index % 60, static_cast<double>(index % 29) + load * seconds,
                       2000 + index % 90000, load * 100, app,
                       main ? fmt::format("MacOS/Some Application {}", app)
                            : "Frameworks/Framework.framework/Versions/A/Helpers/Some Helper "
                              "(Renderer).app/Contents/MacOS/Some Helper (Renderer)");
    }
    return text;
}

const ProcessCatalog& catalog() {
    static const ProcessCatalog shipped{CatalogFile::read(PACELET_RESOURCES "/processes.json")};
    return shipped;
}

void parse(benchmark::State& state) {
    const std::string text = table(state.range(0), 0);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(PSParser::parse(text));
    }
    state.SetComplexityN(state.range(0));
    state.counters["per line"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}
BENCHMARK(parse)->Arg(600)->Arg(2000)->Arg(6000)->Arg(20000)->Complexity(benchmark::oN);

/// Parse, meter, group, explain what needs it, diagnose.
void answer(benchmark::State& state) {
    const std::string text = table(state.range(0), 3);
    const std::optional<Snapshot> previous =
        Snapshot{fromUnixTime(0), PSParser::parse(table(state.range(0), 0))};
    const auto noFootprint = [](std::int32_t) { return std::optional<std::int64_t>{}; };
    for ([[maybe_unused]] auto _ : state) {
        const Snapshot current{fromUnixTime(3), PSParser::parse(text)};
        const auto groups = AppGrouper::group(CPUMeter::usage(previous, current, noFootprint), 501);
        DiagnosisInput input;
        input.signals.coreCount = 8;
        input.groups = groups;
        benchmark::DoNotOptimize(Diagnosis::run(input, catalog()));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(answer)
    ->Arg(600)
    ->Arg(2000)
    ->Arg(6000)
    ->Arg(20000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);

/// What the open window adds: an explanation for every group.
void explainAll(benchmark::State& state) {
    const auto noFootprint = [](std::int32_t) { return std::optional<std::int64_t>{}; };
    const Snapshot current{fromUnixTime(3), PSParser::parse(table(state.range(0), 3))};
    const auto groups = AppGrouper::group(CPUMeter::usage(std::nullopt, current, noFootprint), 501);
    for ([[maybe_unused]] auto _ : state) {
        for (const ProcessGroup& group : groups) {
            benchmark::DoNotOptimize(catalog().explain(group));
        }
    }
    state.counters["groups"] = static_cast<double>(groups.size());
}
BENCHMARK(explainAll)->Arg(2000)->Unit(benchmark::kMicrosecond);

void loadCatalog(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(CatalogFile::read(PACELET_RESOURCES "/processes.json"));
    }
}
BENCHMARK(loadCatalog)->Unit(benchmark::kMicrosecond);

} // namespace
