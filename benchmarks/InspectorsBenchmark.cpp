#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Inspectors/SpotlightAdvisor.h"
#include "tests/Support/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

namespace pacelet {
namespace {

std::string listing(std::int64_t lines) {
    std::string text = "PID\tStatus\tLabel\n";
    for (std::int64_t line = 0; line < lines; ++line) {
        // About every other job runs.
        text += line % 2 == 0 ? fmt::format("{}\t0\tcom.vendor{}.service.agent\n", line, line)
                              : fmt::format("-\t-9\tcom.vendor{}.service.agent\n", line);
    }
    return text;
}

void parseLaunchctlList(benchmark::State& state) {
    const std::string text = listing(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(BackgroundItemsReader::parseLaunchctlList(text));
    }
    state.SetComplexityN(state.range(0));
    state.counters["per line"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}
BENCHMARK(parseLaunchctlList)->RangeMultiplier(4)->Range(256, 16384)->Complexity(benchmark::oN);

constexpr std::string_view header =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//a//b\" \"c\">\n"
    "<plist version=\"1.0\">\n<dict>\n";

/// 300 applications, and 500 jobs: 350 in the launch folders, 150 in applications.
void fill(const testing::TemporaryFolder& folder) {
    const auto job = [](int number) {
        return fmt::format("{}<key>Label</key><string>com.vendor{}.agent</string>\n"
                           "<key>ProgramArguments</key><array><string>/usr/local/bin/tool{}"
                           "</string><string>--quiet</string></array>\n<key>KeepAlive</key>"
                           "<dict><key>SuccessfulExit</key><false/></dict>\n"
                           "<key>RunAtLoad</key><true/></dict></plist>\n",
                           header, number, number);
    };
    for (int app = 0; app < 300; ++app) {
        const std::string contents = fmt::format("root/Applications/App {}.app/Contents/", app);
        std::string info = fmt::format(
            "{}<key>CFBundleIdentifier</key><string>com.vendor{}.App</string>\n", header, app);
        for (int key = 0; key < 40; ++key) {
            info += fmt::format("<key>CFBundleKey{}</key><string>value {}</string>\n", key, key);
        }
        folder.write(contents + "Info.plist", info + "</dict></plist>\n");
        if (app % 2 == 0) {
            folder.write(contents + "Library/LaunchAgents/agent.plist", job(1000 + app));
        }
    }
    for (int number = 0; number < 350; ++number) {
        constexpr std::array<std::string_view, 3> places{
            "home/Library/LaunchAgents", "root/Library/LaunchAgents", "root/Library/LaunchDaemons"};
        folder.write(fmt::format("{}/com.vendor{}.plist",
                                 places[static_cast<std::size_t>(number) % 3], number),
                     job(number));
    }
}

void scan(benchmark::State& state) {
    const testing::TemporaryFolder folder;
    fill(folder);
    std::size_t items = 0;
    for ([[maybe_unused]] auto _ : state) {
        items = BackgroundItemsReader::scan(folder.path() / "home", folder.path() / "root").size();
    }
    state.counters["items"] = static_cast<double>(items);
}
BENCHMARK(scan)->Unit(benchmark::kMillisecond);

void allocatedSize(benchmark::State& state) {
    const testing::TemporaryFolder folder;
    for (int file = 0; file < state.range(0); ++file) {
        folder.write(fmt::format("{}/{}/{}", file % 10, file % 100, file), "x");
    }
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(SpotlightAdvisor::allocatedSize(folder.path()));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(allocatedSize)
    ->Arg(500)
    ->Arg(2000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);

} // namespace
} // namespace pacelet
