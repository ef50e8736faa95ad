#pragma once

#include "Core/Usage/CauseStore.h"
#include "Core/Usage/UsageStore.h"
#include "PaceletApp/Scheduler/Scheduler.h"
#include "PaceletApp/Scheduler/StopOwner.h"
#include "PaceletApp/UsageView/UsageCharts.h"

#include <functional>
#include <optional>
#include <vector>

namespace pacelet {

/// What was read from the history files at one moment.
struct LoadedRecords {
    UsageRange range{};                    ///< of `records`
    TimePoint at{};                        ///< both lists reach back from here
    std::vector<MinuteRecord> records;     ///< for the charts
    std::vector<MinuteRecord> weekRecords; ///< of the last seven days, for the advice
    CauseJournal causes;                   ///< of the range
};

/// Reads the history files in the background: at once, and then every minute for as long as
/// somebody looks. At rest nothing of it wakes up.
class UsageRecords {
public:
    /// Is handed what was read, but never what was read for an earlier range or before a rest.
    using Receiver = std::function<void(LoadedRecords)>;

    /// The scheduler outlives this.
    UsageRecords(Scheduler& scheduler, UsageStore store, CauseStore causes, Receiver receive);

    const UsageRange& range() const { return range_; }

    /// Another range is loaded at once.
    void setRange(const UsageRange& range);

    void setActive(bool active);

private:
    void restart();

    Scheduler& scheduler_;
    UsageStore store_;
    CauseStore causes_;
    Receiver receive_;
    UsageRange range_ = usageRanges.front();
    std::optional<StopOwner> running_;
};

} // namespace pacelet
