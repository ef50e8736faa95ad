#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Knowledge/CatalogEntry.h"
#include "Core/Platform/BackgroundItem.h"
#include "Core/Sampling/MemoryStats.h"
#include "Core/Sampling/ProcessGroup.h"
#include "Core/Sampling/SystemSignals.h"
#include "Core/Usage/CauseWatch.h"
#include "Core/Usage/MacInfo.h"
#include "PaceletApp/Monitor/CPUHistory.h"
#include "PaceletApp/Monitor/Published.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace pacelet {

class Monitor;

using ProcessGroups = std::vector<ProcessGroup>;

/// Explanations by group id.
using Explanations = std::unordered_map<std::string, Explanation>;

/// What the monitor publishes, each field in one line. Reading one reads as a call:
/// `monitor.groups()`; `monitor.groups.held()` keeps it.
class LivePicture {
    template<typename Value>
    using Field = Published<Value, Monitor>;

    friend class Monitor;
    FieldChanges changes_;

    LivePicture() = default;
    ~LivePicture() = default;

public:
    LivePicture(const LivePicture&) = delete;
    LivePicture& operator=(const LivePicture&) = delete;

    /// The latest groups with smoothed CPU, busiest first; their members hold raw figures.
    Field<ProcessGroups> groups{changes_};
    Field<std::optional<SystemSignals>> signals{changes_};
    Field<DiagnosisResult> result{changes_};
    /// When the last tick finished well.
    Field<std::optional<TimePoint>> lastChecked{changes_};
    /// The message to show; the next good tick clears it.
    Field<std::optional<std::string>> error{changes_};
    Field<std::optional<TimePoint>> spotlightBusySince{changes_};
    /// Filled only while the window is visible; `Monitor::explanation` answers at any time.
    Field<Explanations> explanations{changes_};
    /// The last ten minutes.
    Field<CPUHistory> cpuHistory{changes_};
    Field<std::optional<MemoryBreakdown>> memory{changes_};
    Field<bool> isPaused{changes_};
    Field<bool> windowVisible{changes_};
    Field<bool> menuOpen{changes_};
    /// Name of an application that did not quit when asked.
    Field<std::optional<std::string>> stuckApp{changes_};
    /// The latest scan; filled only while the window is visible.
    Field<std::vector<BackgroundItem>> backgroundItems{changes_};
    /// A scan stands behind `backgroundItems`.
    Field<bool> backgroundItemsKnown{changes_};
    /// What this machine is; read once.
    Field<std::optional<MacInfo>> mac{changes_};
    /// Whether minute records are written; kept in the preferences.
    Field<bool> keepHistory{changes_, true};
    /// What stood last, while nothing does now.
    Field<std::optional<Spell>> earlier{changes_};
};

} // namespace pacelet
