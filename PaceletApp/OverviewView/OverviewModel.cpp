#include "PaceletApp/OverviewView/OverviewModel.h"

#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/Router/Router.h"

#include <algorithm>
#include <utility>

namespace pacelet {

OverviewModel::OverviewModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      objects_{objects},
      badge_{objects.monitor, objects.scheduler} {
    connect(&objects.monitor, &Monitor::changed, this, [this](const Fields& fields) {
        const Monitor& monitor = objects_.monitor;
        if (fields.hold(monitor.groups, monitor.explanations, monitor.signals, monitor.result,
                        monitor.lastChecked, monitor.earlier)) {
            refresh();
        }
    });
    refresh();
}

void OverviewModel::refresh() {
    const Monitor& monitor = objects_.monitor;
    const DiagnosisResult& result = monitor.result();
    hero_ = heroLook(monitor.lastChecked().has_value(), result.hero(), monitor.groups());
    earlier_ = earlierLine(monitor.earlier(), QTimeZone::systemTimeZone());
    readings_ = readingsLook(monitor.signals());
    moreLabel_ = moreCausesLabel(result.more().size());
    std::vector<CauseItem> causes;
    for (const Finding& finding : result.more()) {
        causes.push_back(causeItem(finding, monitor.groups()));
    }
    causes_.update(std::move(causes));
    showProcesses();
}

void OverviewModel::showProcesses() {
    const Monitor& monitor = objects_.monitor;
    const std::span groups{monitor.groups()};
    std::vector<ProcessItem> processes;
    for (const ProcessGroup& each : groups.first(std::min(groups.size(), processesShown))) {
        processes.push_back(processItem(each, monitor.explanation(each).get()));
    }
    processes_.update(std::move(processes));
}

void OverviewModel::showAllProcesses() {
    objects_.router.setScreen(Screen::processes);
}

void OverviewModel::showEarlier() {
    objects_.router.showCauses();
}

void OverviewModel::fix(const Finding& finding) {
    if (finding.primaryFix()) {
        objects_.actions.press(*finding.primaryFix(), finding.groupID());
    }
}

void OverviewModel::fixHero() {
    if (const Finding* const finding = objects_.monitor.result().hero()) {
        fix(*finding);
    }
}

void OverviewModel::fixCause(int row) {
    const auto more = objects_.monitor.result().more();
    if (row >= 0 && static_cast<std::size_t>(row) < more.size()) {
        fix(more[static_cast<std::size_t>(row)]);
    }
}

void OverviewModel::fixProcess(const QString& groupId) {
    objects_.actions.press(FixID::quitApp, groupId.toStdString());
}

} // namespace pacelet
