#include "PaceletApp/OverviewView/OverviewFeed.h"

#include <optional>
#include <utility>

namespace pacelet {

OverviewFeed::OverviewFeed(Monitor& monitor, Scheduler& scheduler, OverviewModel& overview,
                           QObject* parent)
    : QObject{parent}, monitor_{monitor}, overview_{overview}, badge_{monitor, scheduler,
                                                                      *overview.badge()} {
    for (const auto signal :
         {&Monitor::groupsChanged, &Monitor::signalsChanged, &Monitor::resultChanged,
          &Monitor::lastCheckedChanged, &Monitor::explanationsChanged}) {
        connect(&monitor, signal, this, &OverviewFeed::showSoon);
    }
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
                    .checked = monitor_.lastChecked().has_value()});
}

} // namespace pacelet
