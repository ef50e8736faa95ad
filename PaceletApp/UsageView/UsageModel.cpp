#include "PaceletApp/UsageView/UsageModel.h"

#include "Core/Platform/Platform.h"
#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Support/QtText.h"

#include <algorithm>
#include <utility>

namespace pacelet {

UsageModel::UsageModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects}, records_{objects.scheduler, objects.monitor.usageStore(),
                                                   [this](LoadedRecords loaded) {
                                                       takeIn(std::move(loaded));
                                                   }},
      verdictLines_{[](const VerdictLine& line) { return line.id; }, verdictRoles()},
      memorySegments_{[](const MemorySegment& segment) { return segment.name.toStdString(); },
                      memoryRoles()} {
    Monitor& monitor = objects.monitor;
    connect(&monitor, &Monitor::cpuHistoryChanged, this, &UsageModel::showCurve);
    connect(&monitor, &Monitor::keepHistoryChanged, this, &UsageModel::showHistoryNote);
    for (const auto signal :
         {&Monitor::signalsChanged, &Monitor::memoryChanged, &Monitor::macChanged}) {
        connect(&monitor, signal, this, &UsageModel::showMachine);
    }
    connect(&monitor, &Monitor::windowVisibleChanged, this, &UsageModel::followWindow);
    followWindow();
}

void UsageModel::followWindow() {
    records_.setActive(objects_.monitor.windowVisible());
    showMachine();
    showCurve();
    showHistoryNote();
}

void UsageModel::takeIn(LoadedRecords loaded) {
    weekRecords_ = std::move(loaded.weekRecords);
    charts_ = historyCharts(std::move(loaded.records), loaded.range, loaded.at,
                            QTimeZone::systemTimeZone());
    loaded_ = true;
    showVerdict();
    showHistoryNote();
}

void UsageModel::showMachine() {
    const Monitor& monitor = objects_.monitor;
    macLine_ = monitor.mac() ? pacelet::macLine(*monitor.mac(), monitor.signals()) : QString{};
    load_ = loadFigure(monitor.signals());
    loadDescription_ = pacelet::loadDescription(monitor.signals());
    memory_ = memoryLook(monitor.memory(), monitor.signals());
    memorySegments_.update(monitor.memory() ? pacelet::memorySegments(*monitor.memory())
                                            : std::vector<MemorySegment>{});
    showVerdict();
}

void UsageModel::showVerdict() {
    if (!loaded_) {
        return;
    }
    const Monitor& monitor = objects_.monitor;
    const std::int64_t memory =
        monitor.mac() ? monitor.mac()->memoryBytes : objects_.platform.kernel.physicalMemory();
    const UpgradeVerdict verdict =
        UpgradeAdvisor::evaluate(weekRecords_, memory, diskFreeShare(monitor.signals()));
    verdictLines_.update(pacelet::verdictLines(verdict, monitor.mac()));
    hoursNote_ = pacelet::hoursNote(verdict);
}

void UsageModel::showCurve() {
    loadCurve_ = pacelet::loadCurve(objects_.monitor.cpuHistory(), QTimeZone::systemTimeZone());
}

void UsageModel::showHistoryNote() {
    historyNote_ =
        loaded_ ? pacelet::historyNote(objects_.monitor.keepHistory(), charts_.value()) : QString{};
}

QList<QString> UsageModel::ranges() const {
    QList<QString> labels;
    for (const UsageRange& each : usageRanges) {
        labels.append(qtText(each.label));
    }
    return labels;
}

void UsageModel::chooseRange(int place) {
    if (place >= 0 && static_cast<std::size_t>(place) < usageRanges.size() && place != range_) {
        range_ = place;
        records_.setRange(usageRanges[static_cast<std::size_t>(place)]);
    }
}

void UsageModel::fix(const QString& rawValue) {
    if (const auto fix = fixIDFromRawValue(rawValue.toStdString())) {
        objects_.actions.perform(*fix, nullptr);
    }
}

} // namespace pacelet
