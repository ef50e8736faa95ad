#include "Core/Usage/CauseStore.h"
#include "Core/Usage/CauseWatch.h"
#include "Core/Usage/HistoryLines.h"
#include "Core/Usage/UpgradeAdvisor.h"
#include "Core/Usage/UsageBuckets.h"
#include "Core/Usage/UsageStore.h"
#include "benchmarks/AllocationPeak.h"
#include "tests/Support/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <map>
#include <random>

namespace pacelet {
namespace {

constexpr std::int64_t days = 30;
constexpr std::int64_t firstMinute = 20'000 * minutesPerDay + 600; // not at midnight: 31 files

/// What a machine measures in so many minutes, loads with a fraction or two.
std::vector<MinuteRecord> history(std::int64_t minutes) {
    std::mt19937_64 random{1};
    std::uniform_int_distribution<std::int64_t> bytes{0, std::int64_t{1} << 34};
    std::uniform_int_distribution<int> load{0, 7999};
    std::vector<MinuteRecord> records;
    for (std::int64_t minute = 0; minute < minutes; ++minute) {
        const double cpu = load(random) / 80.0;
        records.push_back(
            {firstMinute + minute, cpu, cpu + 0.5, minute % 3, bytes(random), bytes(random), 20});
    }
    return records;
}

/// Thirty days of files, written once.
class Files {
public:
    Files() {
        std::map<std::int64_t, std::string> texts;
        for (const MinuteRecord& each : history(days * minutesPerDay)) {
            texts[each.t / minutesPerDay] += HistoryLines::encode(each);
        }
        for (const auto& [day, text] : texts) {
            // The first line makes the file and its name.
            store.append({.t = day * minutesPerDay});
        }
        auto text = texts.begin();
        for (const std::string& name : names()) {
            folder.write(name, text->second);
            bytes += text->second.size();
            ++text;
        }
    }

    testing::TemporaryFolder folder;
    UsageStore store{folder.path()};
    std::size_t bytes = 0;

private:
    std::vector<std::string> names() const {
        std::vector<std::string> sorted;
        for (const auto& entry : std::filesystem::directory_iterator{folder.path()}) {
            sorted.push_back(entry.path().filename());
        }
        std::sort(sorted.begin(), sorted.end());
        return sorted;
    }
};

const Files& files() {
    static const Files made;
    return made;
}

void load(benchmark::State& state) {
    const auto end = static_cast<double>(firstMinute + days * minutesPerDay) * secondsPerMinute;
    const auto since = fromUnixTime(end - static_cast<double>(state.range(0)) * 86400);
    std::size_t records = 0;
    const UsageStore& store = files().store;
    resetAllocationPeak();
    for ([[maybe_unused]] auto _ : state) {
        records = store.load(since).size();
    }
    state.counters["lines"] = static_cast<double>(records);
    state.counters["peak/disk"] =
        static_cast<double>(allocationPeak()) / static_cast<double>(files().bytes);
    state.counters["MB on disk"] = static_cast<double>(files().bytes) / 1e6;
}
BENCHMARK(load)->Arg(1)->Arg(7)->Arg(30)->Unit(benchmark::kMillisecond);

void bucket(benchmark::State& state) {
    const auto records = history(days * minutesPerDay);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(UsageBuckets::bucket(records, state.range(0)));
    }
}
BENCHMARK(bucket)->Arg(60)->Arg(1440)->Unit(benchmark::kMicrosecond);

void evaluate(benchmark::State& state) {
    const auto records = history(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(UpgradeAdvisor::evaluate(records, std::int64_t{16} << 30, 0.5));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(evaluate)
    ->Arg(7 * minutesPerDay)
    ->Arg(15 * minutesPerDay)
    ->Arg(days* minutesPerDay)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);

void append(benchmark::State& state) {
    const testing::TemporaryFolder folder;
    const UsageStore store{folder.path()};
    const auto records = history(minutesPerDay);
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        store.append(records[next++ % records.size()]);
    }
}
BENCHMARK(append)->Unit(benchmark::kMicrosecond);

const Cause causes[] = {{FindingKind::spotlight, "", ""},
                        {FindingKind::browser, "/Applications/Google Chrome.app", "Google Chrome"},
                        {FindingKind::cpuHog, "/Applications/Xcode.app", "Xcode"}};

/// Thirty days with a cause in each minute.
void loadCauses(benchmark::State& state) {
    const testing::TemporaryFolder folder;
    const CauseStore store{folder.path()};
    const std::int64_t end = firstMinute + days * minutesPerDay;
    for (std::int64_t t = firstMinute; t < end; ++t) {
        store.append({t, {{causes[t / 20 % 3], Severity::medium, 60, 123.45, 150.5}}});
    }
    for ([[maybe_unused]] auto _ : state) {
        const CauseJournal journal = store.load(distantPast);
        state.counters["notes"] = static_cast<double>(journal.entries().size());
    }
}
BENCHMARK(loadCauses)->Unit(benchmark::kMillisecond);

/// What a tick with three causes among 300 groups costs the journal, on the UI thread.
void watchCauses(benchmark::State& state) {
    std::vector<ProcessGroup> groups(300);
    for (std::size_t place = 0; place < groups.size(); ++place) {
        groups[place].id = "pid:" + std::to_string(place);
        groups[place].displayName = "process " + std::to_string(place);
    }
    Diagnosis::WeighedResult found;
    for (const char* const id : {"pid:7", "pid:150", "pid:299"}) {
        found.result.findings.push_back(
            Finding{{.kind = FindingKind::cpuHog, .severity = Severity::medium, .groupID = id}});
        found.weights.push_back(100);
    }
    CauseWatch watch;
    double now = 1.7e9;
    for ([[maybe_unused]] auto _ : state) {
        const auto causesOfTick = causesOf(found, groups, {});
        benchmark::DoNotOptimize(watch.add(causesOfTick, fromUnixTime(now += 3)));
    }
}
BENCHMARK(watchCauses)->Unit(benchmark::kMicrosecond);

void summarizeCauses(benchmark::State& state) {
    CauseJournal journal;
    for (std::int64_t t = 0; t < days * minutesPerDay; ++t) {
        const Cause& cause = causes[t / 20 % 3];
        journal.add(
            {t, journal.placeOf(cause.kind, cause.id, cause.name), Severity::low, 60, 1, 1});
    }
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(journal.summary(0, days * minutesPerDay));
        benchmark::DoNotOptimize(journal.shares(0, days * minutesPerDay, 96));
    }
}
BENCHMARK(summarizeCauses)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace pacelet
