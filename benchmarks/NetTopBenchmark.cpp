#include "Core/Internet/NetTop.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

namespace {

/// Two samples of `lines` processes each, every second one idle, as a busy machine prints them.
std::string output(std::int64_t lines) {
    std::string text;
    for (int sample = 0; sample < 2; ++sample) {
        text += ",bytes_in,bytes_out,\n";
        for (std::int64_t line = 0; line < lines; ++line) {
            const std::int64_t rate = line % 2 == 0 ? 0 : line * 7919 % 2'000'003;
            text += fmt::format("com.example.Hel{}.{},{},{},\n", line % 100, line, rate, rate / 9);
        }
    }
    return text;
}

/// The lines counted are those of the last sample, which are the ones that are read.
void parse(benchmark::State& state) {
    const std::string text = output(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(pacelet::NetTop::parse(text));
    }
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(parse)->RangeMultiplier(8)->Range(64, 32768)->Complexity(benchmark::oN);
