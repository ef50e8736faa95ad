#include "PaceletApp/Monitor/Monitor.h"

#include "Core/Diagnosis/Diagnosis.h"
#include "PaceletApp/Monitor/MonitorLog.h"

#include <fmt/format.h>

#include <utility>

namespace pacelet {

namespace {

constexpr std::string_view sampleFailedMessage = "Couldn't read processes. Retrying.";

} // namespace

QCoro::Task<> Monitor::tick() {
    if (ticking_ || !catalog_) {
        co_return;
    }
    const QPointer<Monitor> self{this};
    ticking_ = true;
    // What holds now holds for the whole tick: the window may open or close before it ends.
    const Explaining explaining = windowVisible() ? Explaining::yes : Explaining::no;
    std::optional<MachineReading> reading;
    auto reader = readInBackground(explaining);
    try {
        reading = co_await reader;
    } catch (const std::exception& failure) {
        if (self) {
            sampleFailed(failure);
        }
    }
    if (self && reading) {
        takeIn(std::move(*reading), explaining);
    }
    if (self && reading && windowVisible()) {
        co_await refreshBackgroundItems(false);
    }
    if (self) {
        ticking_ = false;
    }
}

BackgroundTask<MachineReading> Monitor::readInBackground(Explaining explaining) {
    return scheduler_.runInBackground(
        [&tools = platform_.tools, &kernel = platform_.kernel, &clock = platform_.clock,
         previous = previous_, catalog = catalog_, explaining, knowledge = platform_.knowledge] {
            return readMachine(tools, kernel, clock, *previous, *catalog, explaining, knowledge);
        });
}

void Monitor::takeIn(MachineReading reading, Explaining explaining) {
    if (explaining == Explaining::yes) {
        explanations.set(std::move(reading.explanations));
    }
    memory.set(reading.memory);
    record(reading);
    previous_ = std::make_shared<const std::optional<Snapshot>>(std::move(reading.snapshot));
    smooth(std::move(reading.groups));
    signals.set(reading.signals);
    // Smoothing leaves every group in the list, so its names tell what runs.
    if (stuckApp() && !Diagnosis::isRunning(*stuckApp(), groups())) {
        stuckApp.set({});
    }
    diagnose();
    lastChecked.set(scheduler_.now());
    error.set({});
    publish();
}

void Monitor::record(const MachineReading& reading) {
    const TimePoint now = scheduler_.now();
    CPUHistory longer = cpuHistory();
    addPoint(longer, CPUPoint{now, reading.signals.cpuLoadPercent});
    cpuHistory.set(std::move(longer));
    recordMinute(reading, now);
}

void Monitor::smooth(ProcessGroups latest) {
    history_.push_back(Smoother::cpuByID(latest));
    if (history_.size() > Smoother::window) {
        history_.erase(history_.begin());
    }
    ProcessGroups smoothed = Smoother::average(std::move(latest), history_);
    spotlightBusySince.set(busy_.update(Diagnosis::spotlightLoad(smoothed), scheduler_.now()));
    groups.set(std::move(smoothed));
}

void Monitor::diagnose() {
    const DiagnosisInput input{.signals = *signals(),
                               .groups = groups(),
                               .spotlightBusySince = spotlightBusySince(),
                               .lowPowerMode = platform_.kernel.isLowPowerModeEnabled(),
                               .stuckApp = stuckApp(),
                               .now = scheduler_.now()};
    Diagnosis::WeighedResult found = Diagnosis::weigh(input, *catalog_);
    recordCauses(found, input.now);
    result.set(std::move(found.result));
}

void Monitor::sampleFailed(const std::exception& failure) {
    error.set(std::string{sampleFailedMessage});
    platform_.log.write(LogLevel::error, logSubsystem, monitorLogCategory,
                        fmt::format("sample failed: {}", failure.what()));
    publish();
}

} // namespace pacelet
