#include "PaceletApp/UsageView/UsageModel.h"

#include "Core/Platform/Platform.h"
#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Router/Router.h"
#include "PaceletApp/Support/QtText.h"

#include <algorithm>
#include <utility>

namespace pacelet {

UsageModel::UsageModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      objects_{objects},
      records_{objects.scheduler, objects.monitor.usageStore(), objects.monitor.causeStore(),
               [this](LoadedRecords loaded) { takeIn(std::move(loaded)); }},
      opensAtCauses_{objects.router.takeCausesWanted()} {
    connect(&objects.monitor, &Monitor::changed, this, &UsageModel::follow);
    records_.setActive(objects.monitor.windowVisible());
    showMachine();
    showCurve();
    causes_.setGroups(objects.monitor.groups.held());
}

void UsageModel::follow(const Fields& fields) {
    const Monitor& monitor = objects_.monitor;
    records_.setActive(monitor.windowVisible());
    if (fields.hold(monitor.signals, monitor.memory, monitor.mac)) {
        showMachine();
    }
    if (fields.hold(monitor.groups)) {
        causes_.setGroups(monitor.groups.held());
    }
    if (fields.hold(monitor.cpuHistory)) {
        showCurve();
    }
    if (fields.hold(monitor.keepHistory)) {
        showHistoryNote();
    }
}

void UsageModel::takeIn(LoadedRecords loaded) {
    weekRecords_ = std::move(loaded.weekRecords);
    charts_ = historyCharts(std::move(loaded.records), loaded.range, loaded.at,
                            QTimeZone::systemTimeZone());
    causes_.setJournal(std::move(loaded.causes), loaded.range, charts_.value(), loaded.at);
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
    verdictLines_.update(
        pacelet::verdictLines(verdict, monitor.mac(), objects_.platform.abilities));
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

void UsageModel::showProcess(const QString& groupId) {
    objects_.actions.press(FixID::explain, groupId.toStdString());
}

void UsageModel::fix(const QString& rawValue) {
    objects_.actions.press(rawValue.toStdString());
}

} // namespace pacelet
