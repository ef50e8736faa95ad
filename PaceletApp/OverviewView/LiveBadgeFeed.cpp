#include "PaceletApp/OverviewView/LiveBadgeFeed.h"

#include <cmath>

namespace pacelet {

namespace {

/// Until the next whole second since the last check; after the clock was set back the age stands at
/// 0, however long that lasts.
Seconds untilAgeChanges(const Monitor& monitor, TimePoint now) {
    const double age = (now - *monitor.lastChecked()).count();
    return Seconds{age < 0 ? 1 : 1 - std::fmod(age, 1.0)};
}

} // namespace

LiveBadgeFeed::LiveBadgeFeed(Monitor& monitor, Scheduler& scheduler, LiveBadgeModel& badge,
                             QObject* parent)
    : QObject{parent}, monitor_{monitor}, scheduler_{scheduler}, badge_{badge},
      seconds_{scheduler, [this] { return untilAgeChanges(monitor_, scheduler_.now()); },
               [this] { badge_.showAge(scheduler_.now()); }} {
    for (const auto signal : {&Monitor::lastCheckedChanged, &Monitor::isPausedChanged,
                              &Monitor::windowVisibleChanged}) {
        connect(&monitor, signal, this, &LiveBadgeFeed::show);
    }
    connect(&badge, &LiveBadgeModel::pauseToggled, &monitor, &Monitor::togglePause);
    show();
}

void LiveBadgeFeed::show() {
    badge_.show(monitor_.isPaused(), monitor_.lastChecked(), scheduler_.now());
    seconds_.setActive(monitor_.windowVisible() && !monitor_.isPaused() && monitor_.lastChecked());
}

} // namespace pacelet
