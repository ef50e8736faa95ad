// What a tick of the monitor costs with its window open: the share of the UI thread, which holds up
// the screen, and the whole of a tick on this machine.

#include "Core/Knowledge/CatalogFile.h"
#include "Hosts/Linux/LinuxHost.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Scheduler/RealScheduler.h"
#include "benchmarks/CrowdedMac.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>
#include <string>

namespace pacelet {
namespace {

/// A monitor on the real pool whose ticks come on demand.
class Ticker {
public:
    Ticker(const Platform& platform, Scheduler& scheduler)
        : monitor_{platform, scheduler,
                   ProcessCatalog{CatalogFile::read(PACELET_RESOURCES "/processes.json")}} {
        monitor_.togglePause();
        monitor_.setWindowVisible(true);
        tick();
    }

    /// One tick, the scan of the background items included when it is due.
    void tick() {
        ended_ = false;
        detach(runTick());
        while (!ended_) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

private:
    QCoro::Task<> runTick() {
        co_await monitor_.tick();
        ended_ = true;
    }

    Monitor monitor_;
    bool ended_ = false;
};

/// The loop of the events that all ticks share.
void openApplication() {
    static int count = 1;
    static char name[] = "benchmark";
    static char* arguments[] = {name, nullptr};
    static const QCoreApplication application{count, arguments};
}

void uiThreadOfATick(benchmark::State& state) {
    openApplication();
    Simulated::SimulatedMac mac{crowdedMac(state.range(0))};
    RealScheduler scheduler{mac.machine};
    Ticker ticker{mac.platform(), scheduler};
    for ([[maybe_unused]] auto _ : state) {
        mac.machine.advance(Seconds{3});
        const double begin = threadSeconds();
        ticker.tick();
        state.SetIterationTime(threadSeconds() - begin);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(uiThreadOfATick)
    ->RangeMultiplier(2)
    ->Range(250, 4000)
    ->Arg(10'000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oNLogN);

void liveTick(benchmark::State& state) {
    openApplication();
    Linux::LinuxHost host;
    Simulated::SimulatedMac mac{Simulated::World{}};
    const Platform desktop = mac.platform();
    const Platform platform{host.clock(),       host.tools(),        host.kernel(),
                            desktop.workspace,  host.networkLink(),  desktop.windowServer,
                            desktop.loginItems, desktop.preferences, desktop.log,
                            desktop.home,       desktop.root,        desktop.applicationSupport};
    RealScheduler scheduler{host.clock()};
    Ticker ticker{platform, scheduler};
    for ([[maybe_unused]] auto _ : state) {
        ticker.tick();
    }
}
BENCHMARK(liveTick)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace pacelet
