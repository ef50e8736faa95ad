#pragma once

#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/OverviewView/OverviewModel.h"
#include "PaceletApp/Scheduler/Heartbeat.h"

#include <QObject>

namespace pacelet {

/// Keeps the overview showing what the monitor publishes, and its seconds counting while the window
/// is on screen.
class OverviewFeed final : public QObject {
    Q_OBJECT

public:
    /// All of them outlive this.
    OverviewFeed(Monitor& monitor, Scheduler& scheduler, OverviewModel& overview,
                 QObject* parent = nullptr);

private:
    void showSoon();
    void show();

    Monitor& monitor_;
    Scheduler& scheduler_;
    OverviewModel& overview_;
    Heartbeat seconds_;
    bool pending_ = false;
};

} // namespace pacelet
