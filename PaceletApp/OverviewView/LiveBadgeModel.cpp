#include "PaceletApp/OverviewView/LiveBadgeModel.h"

#include "PaceletApp/OverviewView/OverviewLook.h"

#include <utility>

namespace pacelet {

LiveBadgeModel::LiveBadgeModel(QObject* parent)
    : QObject{parent}, text_{liveText(false, std::nullopt, {})} {}

void LiveBadgeModel::show(bool paused, std::optional<TimePoint> lastChecked, TimePoint now) {
    const bool changed = paused != paused_ || lastChecked.has_value() != checked();
    paused_ = paused;
    lastChecked_ = lastChecked;
    if (changed) {
        Q_EMIT stateChanged();
    }
    showAge(now);
}

void LiveBadgeModel::showAge(TimePoint now) {
    QString text = liveText(paused_, lastChecked_, now);
    if (text != text_) {
        text_ = std::move(text);
        Q_EMIT textChanged();
    }
}

} // namespace pacelet
