#pragma once

#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/OverviewView/LiveBadgeFeed.h"
#include "PaceletApp/OverviewView/OverviewModel.h"

#include <QObject>

namespace pacelet {

/// Keeps the overview showing what the monitor publishes.
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
    OverviewModel& overview_;
    LiveBadgeFeed badge_;
    bool pending_ = false;
};

} // namespace pacelet
