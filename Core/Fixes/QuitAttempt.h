#pragma once

#include "Core/Fixes/FixOutcome.h"
#include "Core/Platform/Workspace.h"
#include "Core/Support/Time.h"

#include <memory>
#include <optional>
#include <vector>

namespace pacelet {

using RunningApplications = std::vector<std::shared_ptr<RunningApplication>>;

/// The wait for applications that were asked to quit, stepped by its owner: call `poll` at once,
/// and then every `pollInterval` until it gives an outcome. Belongs to the UI thread.
class QuitAttempt {
public:
    static constexpr Seconds pollInterval{0.25};

    /// An attempt that was over before it began.
    explicit QuitAttempt(FixOutcome outcome)
        : outcome_{std::move(outcome)} {}

    /// Waits for all of `applications`, until `timeout` after the first poll.
    QuitAttempt(RunningApplications applications, Seconds timeout)
        : applications_{std::move(applications)},
          timeout_{timeout} {}

    /// The outcome, or nothing while there is reason to wait. From the deadline on this is
    /// `finish`. An outcome once given stays.
    std::optional<FixOutcome> poll(MonotonicTime now);

    /// Takes one last look, without waiting for the deadline: done, or still running.
    FixOutcome finish();

private:
    bool allTerminated() const;

    RunningApplications applications_;
    Seconds timeout_{};
    std::optional<MonotonicTime> deadline_;
    std::optional<FixOutcome> outcome_;
};

} // namespace pacelet
