#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Diagnosis/MachineReading.h"
#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Platform/Platform.h"
#include "Core/Sampling/BusyTracker.h"
#include "Core/Sampling/MemoryStats.h"
#include "Core/Sampling/ProcessGroup.h"
#include "Core/Sampling/ProcessSample.h"
#include "Core/Sampling/Smoother.h"
#include "Core/Sampling/SystemSignals.h"
#include "Core/Usage/MacInfo.h"
#include "Core/Usage/MinuteAggregator.h"
#include "Core/Usage/UsageStore.h"
#include "PaceletApp/Monitor/CPUHistory.h"
#include "PaceletApp/Scheduler/Detach.h"
#include "PaceletApp/Scheduler/Scheduler.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <array>
#include <bitset>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace pacelet {

/// Explanations by group id.
using Explanations = std::unordered_map<std::string, Explanation>;

/// The bundled catalog, or nothing when it cannot be loaded. Reads a file.
std::optional<ProcessCatalog> loadCatalog(const ResourceLocations& locations);

/// The program's heart: samples the machine at the cadence that the moment asks for, and publishes
/// the live picture. Screens read it and compute nothing of their own. Belongs to the UI thread.
///
/// A published field has one signal, sent when its value changed and at no other time. A tick sends
/// its signals when all its fields are set, so whoever listens to one may read them all.
class Monitor final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isPaused READ isPaused NOTIFY isPausedChanged)
    Q_PROPERTY(
        bool windowVisible READ windowVisible WRITE setWindowVisible NOTIFY windowVisibleChanged)
    Q_PROPERTY(bool menuOpen READ menuOpen WRITE setMenuOpen NOTIFY menuOpenChanged)
    Q_PROPERTY(bool keepHistory READ keepHistory WRITE setKeepHistory NOTIFY keepHistoryChanged)

public:
    /// Without a catalog nothing is ever sampled. The host behind `platform` and the scheduler
    /// outlive the monitor.
    Monitor(const Platform& platform, Scheduler& scheduler, std::optional<ProcessCatalog> catalog,
            QObject* parent = nullptr);
    ~Monitor() override;

    /// The latest groups with smoothed CPU, busiest first; their members hold raw figures.
    const std::vector<ProcessGroup>& groups() const { return groups_; }
    const std::optional<SystemSignals>& signals() const { return signals_; }
    const DiagnosisResult& result() const { return result_; }
    /// When the last tick finished well.
    const std::optional<TimePoint>& lastChecked() const { return lastChecked_; }
    /// The message to show; the next good tick clears it.
    const std::optional<std::string>& error() const { return error_; }
    const std::optional<TimePoint>& spotlightBusySince() const { return spotlightBusySince_; }
    /// Filled only while the window is visible; `explanation` answers at any time.
    const Explanations& explanations() const { return explanations_; }
    /// The last ten minutes.
    const CPUHistory& cpuHistory() const { return cpuHistory_; }
    const std::optional<MemoryBreakdown>& memory() const { return memory_; }
    bool isPaused() const { return isPaused_; }
    bool windowVisible() const { return windowVisible_; }
    bool menuOpen() const { return menuOpen_; }
    /// Name of an application that did not quit when asked.
    const std::optional<std::string>& stuckApp() const { return stuckApp_; }
    /// The latest scan; filled only while the window is visible.
    const std::vector<BackgroundItem>& backgroundItems() const { return backgroundItems_; }
    /// What this machine is; read once.
    const std::optional<MacInfo>& mac() const { return mac_; }
    /// Whether minute records are written; kept in the preferences.
    bool keepHistory() const { return keepHistory_; }

    /// Null when it could not be loaded.
    const ProcessCatalog* catalog() const { return catalog_.get(); }

    /// The history files; a copy may be handed to background work.
    const UsageStore& usageStore() const { return usageStore_; }

    /// Starts the loop, whose first tick runs at once. Does nothing while it runs, or without a
    /// catalog.
    void start();

    /// Looks at the machine once, paused or not. Does nothing while a tick is under way.
    QCoro::Task<> tick();

    /// Starts a `tick` and returns.
    Q_INVOKABLE void checkNow();

    /// Pauses the loop, or goes on with a tick at once.
    Q_INVOKABLE void togglePause();

    /// A change restarts the loop at its new cadence.
    void setWindowVisible(bool visible);
    void setMenuOpen(bool open);

    void setStuckApp(std::optional<std::string> name);
    void setKeepHistory(bool keep);

    /// Scans the background items, unless that was done a short while ago and `force` is false.
    QCoro::Task<> refreshBackgroundItems(bool force);

    /// The first group with this id, or null. It lives until the next change of `groups`.
    const ProcessGroup* group(const std::optional<std::string>& id) const;

    /// The first process with this pid, in the order of `groups`, or null. It lives until the next
    /// change of `groups`.
    const ProcessUsage* usage(std::int32_t pid) const;

    /// What the group is, from `explanations` or else from the catalog on the spot.
    std::optional<Explanation> explanation(const ProcessGroup& group) const;

Q_SIGNALS:
    void groupsChanged();
    void signalsChanged();
    void resultChanged();
    void lastCheckedChanged();
    void errorChanged();
    void spotlightBusySinceChanged();
    void explanationsChanged();
    void cpuHistoryChanged();
    void memoryChanged();
    void isPausedChanged();
    void windowVisibleChanged();
    void menuOpenChanged();
    void stuckAppChanged();
    void backgroundItemsChanged();
    void macChanged();
    void keepHistoryChanged();

private:
    /// The published fields, in the order in which their changes are told.
    enum class Field {
        groups,
        signals,
        result,
        lastChecked,
        error,
        spotlightBusySince,
        explanations,
        cpuHistory,
        memory,
        isPaused,
        windowVisible,
        menuOpen,
        stuckApp,
        backgroundItems,
        mac,
        keepHistory,
        count,
    };
    static constexpr auto fieldCount = static_cast<std::size_t>(Field::count);

    /// Writes a published field and notes whether that changed it.
    template<typename T>
    void store(Field field, T& slot, T value) {
        if (slot != value) {
            slot = std::move(value);
            noteChange(field);
        }
    }
    void noteChange(Field field) { changed_.set(static_cast<std::size_t>(field)); }

    /// Tells all changes since the last call.
    void publish();

    void restartLoop();
    void stopLoop();
    void observeSleep();
    void willSleep();
    void didWake();
    static QCoro::Task<> runLoop(QPointer<Monitor> monitor, Scheduler& scheduler,
                                 CancellationToken token);
    static QCoro::Task<> tickSoon(QPointer<Monitor> monitor, Scheduler& scheduler);

    BackgroundTask<MachineReading> readInBackground(Explaining explaining);
    void takeIn(MachineReading reading, Explaining explaining);
    void record(const SystemSignals& signals, const MemoryBreakdown& memory);
    void smooth(std::vector<ProcessGroup> latest);
    void diagnose();
    void sampleFailed(const std::exception& error);

    void readMacOnce();
    static QCoro::Task<> readMac(QPointer<Monitor> monitor, Scheduler& scheduler);
    void recordMinute(const SystemSignals& signals, const MemoryBreakdown& memory, TimePoint now);
    bool backgroundItemsAreFresh();

    std::vector<ProcessGroup> groups_;
    std::optional<SystemSignals> signals_;
    DiagnosisResult result_;
    std::optional<TimePoint> lastChecked_;
    std::optional<std::string> error_;
    std::optional<TimePoint> spotlightBusySince_;
    Explanations explanations_;
    CPUHistory cpuHistory_;
    std::optional<MemoryBreakdown> memory_;
    bool isPaused_ = false;
    bool windowVisible_ = false;
    bool menuOpen_ = false;
    std::optional<std::string> stuckApp_;
    std::vector<BackgroundItem> backgroundItems_;
    std::optional<MacInfo> mac_;
    bool keepHistory_ = true;

    Platform platform_;
    Scheduler& scheduler_;
    std::shared_ptr<const ProcessCatalog> catalog_;
    /// The snapshot of the last good tick. Shared with the background half instead of copied: no
    /// one changes it, it is only replaced.
    std::shared_ptr<const std::optional<Snapshot>> previous_;
    std::vector<Smoother::CPUByID> history_;
    BusyTracker busy_;
    std::optional<CancellationSource> loop_; ///< nothing while stopped
    bool ticking_ = false;
    bool readingMac_ = false;
    UsageStore usageStore_;
    std::optional<TimePoint> itemsLoadedAt_; ///< when the last scan began
    MinuteAggregator aggregator_;
    ObserverHandle sleepObservers_;
    std::bitset<fieldCount> changed_;
};

} // namespace pacelet
