#pragma once

#include "Core/Diagnosis/MachineReading.h"
#include "Core/Platform/Log.h"
#include "Core/Usage/CauseStore.h"
#include "Core/Usage/CauseWatch.h"
#include "Core/Usage/MinuteAggregator.h"
#include "Core/Usage/UsageStore.h"
#include "PaceletApp/Scheduler/Scheduler.h"

#include <filesystem>
#include <optional>
#include <span>

namespace pacelet {

/// Keeps what stood in the history: a record of each minute, and the causes that stood in it. Its
/// files are read and written in the background; what cannot be written is logged. Belongs to the
/// UI thread.
class HistoryKeeper {
public:
    /// The scheduler and the log outlive the keeper.
    HistoryKeeper(const std::filesystem::path& directory, Scheduler& scheduler, Log& log);

    /// The history files; a copy may be handed to background work.
    const UsageStore& usage() const { return usage_; }
    const CauseStore& causes() const { return causes_; }

    /// Removes what is older than 30 days, and gives the causes of the last day, to be remembered.
    BackgroundTask<CauseJournal> tidy(TimePoint now) const;

    /// Adds what stood before this start.
    void remember(const CauseJournal& earlier) { watch_.remember(earlier); }

    /// Writes the minute before, once a look belongs to the next.
    void addLook(const MachineReading& reading, TimePoint now);

    /// Writes the causes of the minute before, likewise.
    void addCauses(std::span<const FoundCause> found, TimePoint now);

    /// As `CauseWatch::latest`.
    std::optional<Spell> latestSpell(TimePoint now) const { return watch_.latest(now); }

    /// Forgets what stood earlier; its files are another matter.
    void forgetSpells() { watch_.forget(); }

private:
    Scheduler& scheduler_;
    Log& log_;
    UsageStore usage_;
    CauseStore causes_;
    MinuteAggregator aggregator_;
    CauseWatch watch_;
};

} // namespace pacelet
