#include "PaceletApp/ProcessDetail/WindowServerHelpModel.h"

#include "Core/Platform/Platform.h"
#include "PaceletApp/Scheduler/Detach.h"

#include <utility>

namespace pacelet {

WindowServerHelpModel::WindowServerHelpModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      objects_{objects} {
    connect(&objects.monitor, &Monitor::changed, this, [this](const Fields& fields) {
        if (fields.hold(objects_.monitor.groups)) {
            refreshFixes();
        }
    });
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
    if (const auto fix =
            top != nullptr ? windowsFix(*top, objects_.platform.system) : std::nullopt) {
        looks.push_back(lookOf(*fix, top));
    }
    for (const FixID fix : {FixID::openAccessibilityDisplay, FixID::openDisplaySettings}) {
        if (offered(fix, objects_.platform.abilities)) {
            looks.push_back(lookOf(fix, nullptr));
        }
    }
    fixes_.update(std::move(looks));
}

void WindowServerHelpModel::perform(const QString& fix) {
    const ProcessGroup* const top = group();
    objects_.actions.press(fix.toStdString(),
                           top != nullptr ? std::optional{top->id} : std::nullopt);
}

} // namespace pacelet
