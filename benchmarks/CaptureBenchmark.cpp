// Captured desktops: what it takes to open one, and a look at a machine that answers at once.

#include "Core/Knowledge/CatalogFile.h"
#include "Hosts/Recorded/TapedMachine.h"
#include "programs/pacelet-report/Watch.h"

#include <benchmark/benchmark.h>
#include <string>

namespace pacelet {
namespace {

const std::string folder = PACELET_FIXTURES "/captures/";
constexpr const char* desktops[] = {"quiet", "compiling", "runaway"};

void openCapture(benchmark::State& state) {
    const std::string file = folder + desktops[state.range(0)];
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(Recorded::CaptureFile::read(file));
    }
    state.SetLabel(desktops[state.range(0)]);
}
BENCHMARK(openCapture)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);

/// From the process table to the findings, on what a real desktop has.
void lookAtDesktop(benchmark::State& state) {
    const ProcessCatalog catalog =
        ProcessCatalog{CatalogFile::read(PACELET_RESOURCES "/processes.json")}.on(
            OperatingSystem::linuxDesktop);
    Recorded::Replay replay{Recorded::CaptureFile::read(folder + desktops[state.range(0)])};
    report::Watch watch{replay.platform(), catalog};
    std::size_t look = 0;
    for ([[maybe_unused]] auto _ : state) {
        replay.show(look++ % replay.looks());
        benchmark::DoNotOptimize(report::diagnose(watch.look(), catalog));
    }
    state.SetLabel(desktops[state.range(0)]);
}
BENCHMARK(lookAtDesktop)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace pacelet
