#pragma once

#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/OverviewView/LiveBadgeModel.h"
#include "PaceletApp/Scheduler/Heartbeat.h"

#include <QObject>

namespace pacelet {

/// Keeps a badge telling the truth about the monitor, to the second while the window is on screen,
/// and pauses the monitor for it.
class LiveBadgeFeed final : public QObject {
    Q_OBJECT

public:
    /// All of them outlive this.
    LiveBadgeFeed(Monitor& monitor, Scheduler& scheduler, LiveBadgeModel& badge,
                  QObject* parent = nullptr);

private:
    void show();

    Monitor& monitor_;
    Scheduler& scheduler_;
    LiveBadgeModel& badge_;
    Heartbeat seconds_;
};

} // namespace pacelet
