// What the process list costs the UI thread: the rows of a tick, a letter typed into the search,
// and the whole of a tick with the screen open, up to where its frame is painted.

#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Components/Typography.h"
#include "PaceletApp/ProcessesView/ProcessViewport.h"
#include "PaceletApp/Scheduler/RealScheduler.h"
#include "benchmarks/CrowdedMac.h"
#include "tools/session/Session.h"

#include <QApplication>
#include <QQuickItem>

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <string>

namespace pacelet {
namespace {

ProcessGroups crowd(std::int64_t count) {
    ProcessGroups groups;
    for (std::int64_t number = 0; number < count; ++number) {
        ProcessGroup& group = groups.emplace_back();
        group.id = "pid:" + std::to_string(number);
        group.displayName = "daemon-of-a-usual-length-" + std::to_string(number);
        group.members.resize(number % 10 == 0 ? 12 : 1);
        for (ProcessUsage& member : group.members) {
            member.name = group.displayName + " helper";
        }
    }
    return groups;
}

/// Everything that a tick does to the list, with figures that put every group in another place.
void rowsOfATick(benchmark::State& state) {
    const auto groups = std::make_shared<ProcessGroups>(crowd(state.range(0)));
    auto explanation = std::make_shared<const Explanation>();
    ProcessQuery query;
    query.search = state.range(1) != 0 ? QStringLiteral("length-1") : QString{};
    ProcessViewport table;
    table.setView(0, 700);
    double tick = 0;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        tick += 1;
        for (std::size_t number = 0; number < groups->size(); ++number) {
            (*groups)[number].cpuPercent =
                std::fmod(static_cast<double>(number) * 7919 * tick, 100);
        }
        state.ResumeTiming();
        const auto entries = allEntries(groups, [&](const ProcessGroup&) { return explanation; });
        table.show(visibleEntries(entries, query), "pid:3");
    }
}
BENCHMARK(rowsOfATick)
    ->ArgNames({"groups", "search"})
    ->ArgsProduct({{500, 2000, 8000}, {0, 1}})
    ->Unit(benchmark::kMicrosecond);

QQuickItem* among(QQuickItem* from, const QString& name) {
    if (from->objectName() == name) {
        return from;
    }
    for (QQuickItem* const child : from->childItems()) {
        if (QQuickItem* const found = among(child, name)) {
            return found;
        }
    }
    return nullptr;
}

/// The program on the real pool, with a window whose frames are timed.
class Program {
public:
    explicit Program(std::int64_t groups)
        : mac_{crowdedMac(groups * 40 / 33)},
          scheduler_{mac_.machine},
          application_{mac_.platform(), scheduler_, Session::bundledCatalog()} {
        application_.preferences().setOnboarded(true);
        application_.monitor().togglePause();
        application_.router().setScreen(Screen::processes);
        application_.showWindow();
        QQuickWindow& window = *application_.window();
        QObject::connect(&window, &QQuickWindow::beforeRendering,
                         [this] { begin_ = threadSeconds(); });
        QObject::connect(&window, &QQuickWindow::afterRendering,
                         [this] { painting_ += threadSeconds() - begin_; });
        QObject::connect(&window, &QQuickWindow::frameSwapped, [this] { swapped_ = true; });
        list_ = among(window.contentItem(), QStringLiteral("process list"));
        for (int warming = 0; warming < 5; ++warming) {
            tick();
        }
    }

    /// One tick and its frame; gives what it took of this thread, painting apart.
    double tick() {
        mac_.machine.advance(Seconds{3});
        return timed([this] { detach(runTick()); });
    }

    /// Comes to the screen from the overview.
    double arrive() {
        application_.router().setScreen(Screen::overview);
        frame();
        return timed([this] {
            application_.router().setScreen(Screen::processes);
            frameDue();
        });
    }

    /// One frame of a fast scroll through the list.
    double scroll() {
        return timed([this] {
            constexpr double distance = 90;
            const double y = list_->property("contentY").toDouble();
            list_->setProperty("contentY", y < 10'000 ? y + distance : 0);
            frameDue();
        });
    }

    double painting() const { return painting_; }

private:
    void frame() {
        timed([this] { frameDue(); });
    }

    template<typename Work>
    double timed(const Work& work) {
        painting_ = 0;
        due_ = swapped_ = false;
        const double begin = threadSeconds();
        work();
        while (!due_ || !swapped_) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return threadSeconds() - begin - painting_;
    }

    QCoro::Task<> runTick() {
        co_await application_.monitor().tick();
        frameDue();
    }

    /// The next frame shows all of it.
    void frameDue() {
        swapped_ = false;
        application_.window()->update();
        due_ = true;
    }

    Simulated::SimulatedMac mac_;
    RealScheduler scheduler_;
    Application application_;
    QQuickItem* list_ = nullptr;
    bool due_ = false;
    bool swapped_ = false;
    double begin_ = 0;
    double painting_ = 0;
};

void onCrowds(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("groups")->Arg(500)->Arg(2000)->Arg(8000)->UseManualTime()->Unit(
        benchmark::kMillisecond);
}

void tickWithTheScreenOpen(benchmark::State& state) {
    Program program{state.range(0)};
    double painting = 0;
    for ([[maybe_unused]] auto _ : state) {
        state.SetIterationTime(program.tick());
        painting += program.painting();
    }
    state.counters["painting_ms"] =
        benchmark::Counter(painting * 1000, benchmark::Counter::kAvgIterations);
}
BENCHMARK(tickWithTheScreenOpen)->Apply(onCrowds);

void arrivingAtTheScreen(benchmark::State& state) {
    Program program{state.range(0)};
    for ([[maybe_unused]] auto _ : state) {
        state.SetIterationTime(program.arrive());
    }
}
BENCHMARK(arrivingAtTheScreen)->Apply(onCrowds);

void frameOfAScroll(benchmark::State& state) {
    Program program{state.range(0)};
    for ([[maybe_unused]] auto _ : state) {
        state.SetIterationTime(program.scroll());
    }
}
BENCHMARK(frameOfAScroll)
    ->ArgName("groups")
    ->Arg(600)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

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
    benchmark::Shutdown();
    return 0;
}
