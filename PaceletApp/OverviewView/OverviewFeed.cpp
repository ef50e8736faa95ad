#include "PaceletApp/OverviewView/OverviewFeed.h"

#include <cmath>
#include <optional>
#include <utility>

namespace pacelet {

namespace {

/// Until the next whole second since the last check; after the clock was set back the age stands at
/// 0, however long that lasts.
Seconds untilAgeChanges(const Monitor& monitor, TimePoint now) {
    const double age = (now - *monitor.lastChecked()).count();
    return Seconds{age < 0 ? 1 : 1 - std::fmod(age, 1.0)};
}

} // namespace

OverviewFeed::OverviewFeed(Monitor& monitor, Scheduler& scheduler, OverviewModel& overview,
                           QObject* parent)
    : QObject{parent}, monitor_{monitor}, scheduler_{scheduler}, overview_{overview},
      seconds_{scheduler, [this] { return untilAgeChanges(monitor_, scheduler_.now()); },
               [this] { overview_.showAge(scheduler_.now()); }} {
    for (const auto signal :
         {&Monitor::groupsChanged, &Monitor::signalsChanged, &Monitor::resultChanged,
          &Monitor::lastCheckedChanged, &Monitor::explanationsChanged, &Monitor::isPausedChanged}) {
        connect(&monitor, signal, this, &OverviewFeed::showSoon);
    }
    connect(&monitor, &Monitor::windowVisibleChanged, this, &OverviewFeed::showSoon);
    show();
}

/// A tick tells several changes in a row; the screen follows once.
void OverviewFeed::showSoon() {
    if (!std::exchange(pending_, true)) {
        QMetaObject::invokeMethod(this, &OverviewFeed::show, Qt::QueuedConnection);
    }
}

void OverviewFeed::show() {
    pending_ = false;
    std::optional<Explanation> onTheSpot;
    const auto explanation = [&](const ProcessGroup& group) -> const Explanation* {
        const auto known = monitor_.explanations().find(group.id);
        if (known != monitor_.explanations().end()) {
            return &known->second;
        }
        onTheSpot = monitor_.explanation(group);
        return onTheSpot ? &*onTheSpot : nullptr;
    };
    overview_.show({.result = monitor_.result(),
                    .groups = monitor_.groups(),
                    .explanation = explanation,
                    .signals = monitor_.signals(),
                    .lastChecked = monitor_.lastChecked(),
                    .paused = monitor_.isPaused(),
                    .now = scheduler_.now()});
    seconds_.setActive(monitor_.windowVisible() && !monitor_.isPaused() && monitor_.lastChecked());
}

} // namespace pacelet
