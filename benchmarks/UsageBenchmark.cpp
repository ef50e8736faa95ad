#include "PaceletApp/Components/Typography.h"
#include "PaceletApp/RootView/RootModel.h"
#include "PaceletApp/UsageView/UsageModel.h"
#include "tools/session/Session.h"

#include <QApplication>

#include <benchmark/benchmark.h>
#include <memory>
#include <random>

namespace pacelet {
namespace {

constexpr std::int64_t days = 30;

/// Thirty days of what a machine measures, up to the minute `end`.
std::vector<MinuteRecord> history(std::int64_t end) {
    std::mt19937_64 random{1};
    std::uniform_int_distribution<std::int64_t> bytes{0, std::int64_t{1} << 34};
    std::uniform_int_distribution<int> load{0, 7999};
    std::vector<MinuteRecord> records;
    for (std::int64_t minute = end - days * minutesPerDay; minute < end; ++minute) {
        const double cpu = load(random) / 80.0;
        records.push_back({minute, cpu, cpu + 0.5, minute % 3, bytes(random), bytes(random), 20});
    }
    return records;
}

/// The program with its window open and thirty days of history in its files.
class Opened {
public:
    Opened() {
        const auto now =
            static_cast<std::int64_t>(unixTime(session.scheduler().now()) / secondsPerMinute);
        const UsageStore& store = session.application().monitor().usageStore();
        for (const MinuteRecord& each : history(now)) {
            store.append(each);
        }
        const CauseStore& causes = session.application().monitor().causeStore();
        for (std::int64_t t = now - days * minutesPerDay; t < now; ++t) {
            const std::string name = "Application " + std::to_string(t / 30 % 12);
            causes.append({t,
                           {{{FindingKind::cpuHog, "/Applications/" + name + ".app", name},
                             Severity::medium,
                             60,
                             100,
                             120}}});
        }
        session.open(Screen::internet);
        session.pass(600);
    }

    void show(Screen screen) {
        session.application().router().setScreen(screen);
        session.scheduler().settle();
    }

    UsageModel& model() {
        const auto* root = window().property("model").value<RootModel*>();
        return *root->property("screenModel").value<UsageModel*>();
    }

    QQuickWindow& window() { return *session.application().window(); }

    Session session{"quiet"};
};

/// Made with its first use, and gone before the application.
std::unique_ptr<Opened> made;

Opened& opened() {
    if (!made) {
        made = std::make_unique<Opened>();
    }
    return *made;
}

/// From the click in the sidebar to the picture of the screen, with one day of charts.
void openScreen(benchmark::State& state) {
    Opened& program = opened();
    for ([[maybe_unused]] auto _ : state) {
        program.show(Screen::usage);
        benchmark::DoNotOptimize(program.window().grabWindow());
        state.PauseTiming();
        program.show(Screen::internet);
        program.session.pass(0);
        state.ResumeTiming();
    }
}
BENCHMARK(openScreen)->Unit(benchmark::kMillisecond);

/// From the click on a range to the picture of its charts.
void chooseRange(benchmark::State& state) {
    Opened& program = opened();
    program.show(Screen::usage);
    for ([[maybe_unused]] auto _ : state) {
        program.model().chooseRange(static_cast<int>(state.range(0)));
        program.session.scheduler().settle();
        benchmark::DoNotOptimize(program.window().grabWindow());
        state.PauseTiming();
        program.model().chooseRange(0);
        program.session.pass(0);
        state.ResumeTiming();
    }
}
BENCHMARK(chooseRange)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

/// A picture in which nothing changed: what the others hold of drawing alone.
void frame(benchmark::State& state) {
    Opened& program = opened();
    program.show(Screen::usage);
    program.session.pass(0);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(program.window().grabWindow());
    }
}
BENCHMARK(frame)->Unit(benchmark::kMillisecond);

void bars(benchmark::State& state) {
    const std::int64_t now = 20'000 * minutesPerDay;
    const auto records = history(now);
    const TimePoint time = fromUnixTime(static_cast<double>(now) * secondsPerMinute);
    const QTimeZone zone = QTimeZone::systemTimeZone();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(historyCharts(records, usageRanges[2], time, zone));
    }
}
BENCHMARK(bars)->Unit(benchmark::kMicrosecond);

/// What one tick of the monitor costs the live chart, but for its drawing.
void curve(benchmark::State& state) {
    CPUHistory history;
    for (int point = 0; point < 200; ++point) {
        addPoint(history, {fromUnixTime(1.7e9 + 3 * point), point / 2.0});
    }
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(loadCurve(history, QTimeZone::systemTimeZone()));
    }
}
BENCHMARK(curve)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace pacelet

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application{argc, argv};
    QApplication::setQuitOnLastWindowClosed(false);
    pacelet::installFonts();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    pacelet::made.reset();
    return 0;
}
