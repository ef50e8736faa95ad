#include "PaceletApp/ProcessDetail/WindowServerHelpModel.h"

#include "Core/Platform/Platform.h"
#include "PaceletApp/Scheduler/Detach.h"

#include <utility>

namespace pacelet {

WindowServerHelpModel::WindowServerHelpModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects}, windows_{[](const FigureRow& row) { return row.id; },
                                                   figureRoles()},
      fixes_{[](const FixLook& look) { return look.fix.toStdString(); }, fixRoles()} {
    connect(&objects.monitor, &Monitor::groupsChanged, this, &WindowServerHelpModel::refreshFixes);
    refreshFixes();
    detach(ask(this, objects.scheduler, objects.platform.windowServer));
}

QCoro::Task<> WindowServerHelpModel::ask(QPointer<WindowServerHelpModel> help, Scheduler& scheduler,
                                         WindowServer& server) {
    auto census = scheduler.runInBackground([&server] {
        return Census{WindowCensus::live(server), WindowCensus::displays(server)};
    });
    Census counted = co_await census;
    if (help) {
        help->answer(std::move(counted));
    }
}

void WindowServerHelpModel::answer(Census census) {
    counts_ = std::move(census.counts);
    displays_ = displaysText(census.displays);
    windows_.update(windowRows(counts_));
    refreshFixes();
    Q_EMIT changed();
}

const ProcessGroup* WindowServerHelpModel::group() const {
    return topGroup(counts_, objects_.monitor.groups());
}

void WindowServerHelpModel::refreshFixes() {
    std::vector<FixLook> looks;
    const ProcessGroup* const top = group();
    if (const auto fix = top != nullptr ? windowsFix(*top) : std::nullopt) {
        looks.push_back(lookOf(*fix, top));
    }
    looks.push_back(lookOf(FixID::openAccessibilityDisplay, nullptr));
    looks.push_back(lookOf(FixID::openDisplaySettings, nullptr));
    fixes_.update(std::move(looks));
}

void WindowServerHelpModel::perform(const QString& fix) {
    if (const auto id = fixIDFromRawValue(fix.toStdString())) {
        objects_.actions.perform(*id, group());
    }
}

} // namespace pacelet
