#include "PaceletApp/MenuBarView/LiveDot.h"

#include "PaceletApp/Components/LiveBadgeModel.h"
#include "PaceletApp/Support/QtText.h"

#include <fmt/format.h>

namespace pacelet {

namespace {

constexpr Seconds refreshInterval{5};

} // namespace

QString liveDotText(const std::optional<TimePoint>& lastChecked, TimePoint now) {
    if (!lastChecked) {
        return QStringLiteral("checking…");
    }
    return qtText(fmt::format("checked {:.0f}s ago", wholeSecondsSince(*lastChecked, now)));
}

LiveDot::LiveDot(Monitor& monitor, Scheduler& scheduler, QObject* parent)
    : QObject{parent},
      monitor_{monitor},
      scheduler_{scheduler},
      heartbeat_{scheduler, [] { return refreshInterval; }, [this] { refresh(); }} {
    connect(&monitor, &Monitor::changed, this, [this](const Fields& fields) {
        if (fields.hold(monitor_.lastChecked)) {
            refresh();
        }
    });
}

void LiveDot::setShown(bool shown) {
    if (shown == heartbeat_.isActive()) {
        return;
    }
    heartbeat_.setActive(shown);
    refresh();
    Q_EMIT shownChanged();
}

void LiveDot::refresh() {
    text_ = shown() ? liveDotText(monitor_.lastChecked(), scheduler_.now()) : QString{};
}

} // namespace pacelet
