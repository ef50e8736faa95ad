#include "Core/Browser/TabListing.h"
#include "Core/Browser/TabScript.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <iterator>

namespace pacelet {

namespace {

constexpr std::int64_t tabsPerWindow = 84;

/// A listing of `tabs` tabs in windows of three profiles; every fifth address is met before.
/// `scattered` deals the tabs out over windows that were all told before.
std::string listing(std::int64_t tabs, bool scattered) {
    std::string windows;
    std::string rest;
    const std::int64_t windowCount = (tabs + tabsPerWindow - 1) / tabsPerWindow;
    for (std::int64_t tab = 0; tab < tabs; ++tab) {
        if (tab % tabsPerWindow == 0) {
            fmt::format_to(std::back_inserter(scattered ? windows : rest),
                           "W\x1F{}\x1Fnormal\x1F"
                           "3\x1FNews - Google Chrome - Profile {}\x1E",
                           tab / tabsPerWindow, tab / tabsPerWindow % 3);
        }
        const std::int64_t window = scattered ? tab % windowCount : tab / tabsPerWindow;
        fmt::format_to(
            std::back_inserter(rest),
            "T\x1F{}\x1F{}\x1FWhat stands in the title of page {}\x1F"
            "https://www.Site{}.example.com/articles/2024/05/some-page-{}/?id={}#top\x1E",
            window, tab, tab, tab % 97, tab - tab % 5 / 4, tab / 5);
    }
    return windows + rest;
}

void measure(benchmark::State& state, bool scattered) {
    const std::string text = listing(state.range(0), scattered);
    for ([[maybe_unused]] auto _ : state) {
        const auto windows = TabScript::parse(text, "Google Chrome");
        benchmark::DoNotOptimize(TabCleanup::duplicates(windows));
        benchmark::DoNotOptimize(TabCleanup::mergePlan(windows));
    }
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void parse(benchmark::State& state) {
    const std::string text = listing(state.range(0), false);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(TabScript::parse(text, "Google Chrome"));
    }
}

void duplicates(benchmark::State& state) {
    const auto windows = TabScript::parse(listing(state.range(0), false), "Google Chrome");
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(TabCleanup::duplicates(windows));
    }
}

void mergePlan(benchmark::State& state) {
    const auto windows = TabScript::parse(listing(state.range(0), false), "Google Chrome");
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(TabCleanup::mergePlan(windows));
    }
}

void mergeScript(benchmark::State& state) {
    const auto plan =
        TabCleanup::mergePlan(TabScript::parse(listing(state.range(0), false), "Google Chrome"));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(TabScript::merge(plan.value(), ChromiumBrowser::chrome));
    }
}

void extensions(benchmark::State& state) {
    std::string text;
    for (std::int64_t line = 0; line < state.range(0); ++line) {
        fmt::format_to(std::back_inserter(text),
                       "{:5} {:6} /Applications/Google Chrome.app/Contents/Helper --type=renderer "
                       "--field-trial-handle=1718379636 --origin-trials={:0100} {}\n",
                       line, 1000 + line, line, line % 3 == 0 ? "--extension-process" : "");
    }
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(TabCleanup::extensions(text, "/Applications/Google Chrome.app"));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

constexpr std::int64_t manyTabs = 5000;

BENCHMARK_CAPTURE(measure, inOrder, false)
    ->Range(500, 64'000)
    ->Arg(manyTabs)
    ->Complexity(benchmark::oN);
BENCHMARK_CAPTURE(measure, scattered, true)
    ->Range(500, 64'000)
    ->Arg(manyTabs)
    ->Complexity(benchmark::oN);
BENCHMARK(parse)->Arg(manyTabs);
BENCHMARK(duplicates)->Arg(manyTabs);
BENCHMARK(mergePlan)->Arg(manyTabs);
BENCHMARK(mergeScript)->Arg(manyTabs);
BENCHMARK(extensions)->Arg(1000);

} // namespace

} // namespace pacelet
