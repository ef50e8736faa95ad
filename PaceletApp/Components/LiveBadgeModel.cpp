#include "PaceletApp/Components/LiveBadgeModel.h"

#include "PaceletApp/Support/QtText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace pacelet {

double wholeSecondsSince(TimePoint then, TimePoint now) {
    return std::max(0.0, std::trunc((now - then).count()));
}

QString liveText(bool paused, std::optional<TimePoint> lastChecked, TimePoint now) {
    if (paused) {
        return QStringLiteral("Paused");
    }
    if (!lastChecked) {
        return QStringLiteral("Checking…");
    }
    return qtText(fmt::format("Live · checked {:.0f}s ago", wholeSecondsSince(*lastChecked, now)));
}

LiveBadgeModel::LiveBadgeModel(Monitor& monitor, Scheduler& scheduler, QObject* parent)
    : QObject{parent},
      monitor_{monitor},
      scheduler_{scheduler},
      seconds_{scheduler, [this] { return untilAgeChanges(); }, [this] { showAge(); }} {
    connect(&monitor, &Monitor::changed, this, [this](const Fields& fields) {
        if (fields.hold(monitor_.lastChecked, monitor_.isPaused, monitor_.windowVisible)) {
            show();
        }
    });
    show();
}

void LiveBadgeModel::show() {
    paused_ = monitor_.isPaused();
    checked_ = monitor_.lastChecked().has_value();
    showAge();
    seconds_.setActive(monitor_.windowVisible() && !paused_ && checked_);
}

void LiveBadgeModel::showAge() {
    text_ = liveText(monitor_.isPaused(), monitor_.lastChecked(), scheduler_.now());
}

/// Until the next whole second since the last check; after the clock was set back the age stands at
/// 0, however long that lasts.
Seconds LiveBadgeModel::untilAgeChanges() const {
    const double age = (scheduler_.now() - *monitor_.lastChecked()).count();
    return Seconds{age < 0 ? 1 : 1 - std::fmod(age, 1.0)};
}

} // namespace pacelet
