#pragma once

#include "Core/Diagnosis/MachineReading.h"
#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Platform/Platform.h"
#include "Core/Platform/ProcessSample.h"
#include "Core/Sampling/BusyTracker.h"
#include "Core/Sampling/Smoother.h"
#include "PaceletApp/Monitor/HistoryKeeper.h"
#include "PaceletApp/Monitor/LivePicture.h"
#include "PaceletApp/Scheduler/Detach.h"
#include "PaceletApp/Scheduler/Scheduler.h"
#include "PaceletApp/Scheduler/StopOwner.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pacelet {

/// The bundled catalog, or nothing when it cannot be loaded. Reads a file.
std::optional<ProcessCatalog> loadCatalog(const ResourceLocations& locations);

/// The program's heart: samples the machine at the cadence that the moment asks for, and publishes
/// the live picture. Screens read it and compute nothing of their own. Belongs to the UI thread.
///
/// A tick tells all its changes with one signal, when all its fields are set; whoever listens does
/// its work once.
class Monitor final : public QObject, public LivePicture {
    Q_OBJECT

public:
    /// Without a catalog nothing is ever sampled. The host behind `platform` and the scheduler
    /// outlive the monitor.
    Monitor(const Platform& platform, Scheduler& scheduler,
            const std::optional<ProcessCatalog>& catalog, QObject* parent = nullptr);
    ~Monitor() override;

    /// Null when it could not be loaded.
    const ProcessCatalog* catalog() const { return catalog_.get(); }

    /// The history files; a copy may be handed to background work.
    const UsageStore& usageStore() const { return history_.usage(); }
    const CauseStore& causeStore() const { return history_.causes(); }

    /// Starts the loop, whose first tick runs at once. Does nothing while it runs, or without a
    /// catalog.
    void start();

    /// Looks at the machine once, paused or not. Does nothing while a tick is under way.
    QCoro::Task<> tick();

    /// Starts a `tick` and returns.
    void checkNow();

    /// Pauses the loop, or goes on with a tick at once.
    void togglePause();

    /// A change restarts the loop at its new cadence.
    void setWindowVisible(bool visible);
    void setMenuOpen(bool open);

    void setStuckApp(std::optional<std::string> name);
    void setKeepHistory(bool keep);

    /// Forgets what stood earlier; its files are another matter.
    void forgetEarlier();

    /// Scans the background items, unless that was done a short while ago and `force` is false.
    QCoro::Task<> refreshBackgroundItems(bool force);

    /// The first group with this id, or null.
    std::shared_ptr<const ProcessGroup> group(const std::optional<std::string>& id) const;

    /// The first process with this pid, in the order of `groups`, or null.
    std::shared_ptr<const ProcessUsage> usage(std::int32_t pid) const;

    /// What the group is, from `explanations` or else from the catalog on the spot; null without a
    /// catalog.
    std::shared_ptr<const Explanation> explanation(const ProcessGroup& group) const;

Q_SIGNALS:
    /// These fields have another value than when this was last sent; never none.
    void changed(const pacelet::Fields& fields);

private:
    /// Tells all changes since the last call, as the last thing: a listener may end the monitor.
    void publish();

    void restartLoop();
    void stopLoop();
    void observeSleep();
    void willSleep();
    void didWake();
    static QCoro::Task<> runLoop(QPointer<Monitor> monitor, Scheduler& scheduler,
                                 std::stop_token stop);
    static QCoro::Task<> tickSoon(QPointer<Monitor> monitor, Scheduler& scheduler);

    /// What the background half of a tick hands over: its groups are evened out over the ticks
    /// before it already.
    struct Look {
        MachineReading reading;
        Smoother::History before;
        Smoother::History history; ///< the same and this tick
    };

    BackgroundTask<Look> lookInBackground(Explaining explaining);
    void takeIn(Look look, Explaining explaining);
    void record(const MachineReading& reading);
    void showGroups(Look look);
    void diagnose();
    void sampleFailed(const std::exception& failure);

    void readMacOnce();
    static QCoro::Task<> readMac(QPointer<Monitor> monitor, Scheduler& scheduler);
    bool backgroundItemsAreFresh();

    Platform platform_;
    Scheduler& scheduler_;
    std::shared_ptr<const ProcessCatalog> catalog_;
    /// The snapshot of the last good tick. Shared with the background half instead of copied: no
    /// one changes it, it is only replaced.
    std::shared_ptr<const std::optional<Snapshot>> previous_;
    Smoother::History recentCPU_;
    /// The values that the last tick replaced, until the next look frees them.
    std::vector<std::shared_ptr<const void>> replaced_;
    BusyTracker busy_;
    std::optional<StopOwner> loop_; ///< nothing while stopped
    bool ticking_ = false;
    bool macAsked_ = false;
    std::optional<TimePoint> itemsLoadedAt_; ///< when the last scan began
    HistoryKeeper history_;
    ObserverHandle sleepObservers_;
};

} // namespace pacelet
