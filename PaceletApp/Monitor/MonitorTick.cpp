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
    const Explaining explaining = windowVisible_ ? Explaining::yes : Explaining::no;
    std::optional<MachineReading> reading;
    auto reader = readInBackground(explaining);
    try {
        reading = co_await reader;
    } catch (const std::exception& error) {
        if (self) {
            sampleFailed(error);
        }
    }
    if (self && reading) {
        takeIn(std::move(*reading), explaining);
    }
    if (self && reading && windowVisible_) {
        co_await refreshBackgroundItems(false);
    }
    if (self) {
        ticking_ = false;
    }
}

BackgroundTask<MachineReading> Monitor::readInBackground(Explaining explaining) {
    return scheduler_.runInBackground([&tools = platform_.tools, &kernel = platform_.kernel,
                                       &clock = platform_.clock, previous = previous_,
                                       catalog = catalog_, explaining] {
        return readMachine(tools, kernel, clock, *previous, *catalog, explaining);
    });
}

void Monitor::takeIn(MachineReading reading, Explaining explaining) {
    if (explaining == Explaining::yes) {
        store(Field::explanations, explanations_, std::move(reading.explanations));
    }
    store(Field::memory, memory_, std::optional{reading.memory});
    record(reading.signals, reading.memory);
    previous_ = std::make_shared<const std::optional<Snapshot>>(std::move(reading.snapshot));
    smooth(std::move(reading.groups));
    store(Field::signals, signals_, std::optional{reading.signals});
    // Smoothing leaves every group in the list, so its names tell what runs.
    if (stuckApp_ && !Diagnosis::isRunning(*stuckApp_, groups_)) {
        store(Field::stuckApp, stuckApp_, {});
    }
    diagnose();
    store(Field::lastChecked, lastChecked_, std::optional{scheduler_.now()});
    store(Field::error, error_, {});
    publish();
}

void Monitor::record(const SystemSignals& signals, const MemoryBreakdown& memory) {
    const TimePoint now = scheduler_.now();
    addPoint(cpuHistory_, CPUPoint{now, signals.cpuLoadPercent});
    noteChange(Field::cpuHistory);
    recordMinute(signals, memory, now);
}

void Monitor::smooth(std::vector<ProcessGroup> latest) {
    history_.push_back(Smoother::cpuByID(latest));
    if (history_.size() > Smoother::window) {
        history_.erase(history_.begin());
    }
    std::vector<ProcessGroup> smoothed = Smoother::average(std::move(latest), history_);
    store(Field::spotlightBusySince, spotlightBusySince_,
          busy_.update(Diagnosis::spotlightLoad(smoothed), scheduler_.now()));
    store(Field::groups, groups_, std::move(smoothed));
}

void Monitor::diagnose() {
    const DiagnosisInput input{.signals = *signals_,
                               .groups = groups_,
                               .spotlightBusySince = spotlightBusySince_,
                               .lowPowerMode = platform_.kernel.isLowPowerModeEnabled(),
                               .stuckApp = stuckApp_,
                               .now = scheduler_.now()};
    store(Field::result, result_, Diagnosis::run(input, *catalog_));
}

void Monitor::sampleFailed(const std::exception& error) {
    store(Field::error, error_, std::optional<std::string>{sampleFailedMessage});
    platform_.log.write(LogLevel::error, logSubsystem, monitorLogCategory,
                        fmt::format("sample failed: {}", error.what()));
    publish();
}

} // namespace pacelet
