#include "Core/Fixes/QuitAttempt.h"

#include <algorithm>

namespace pacelet {

std::optional<FixOutcome> QuitAttempt::poll(MonotonicTime now) {
    if (!deadline_) {
        deadline_ = now + timeout_;
    }
    if (outcome_ || now >= *deadline_ || allTerminated()) {
        return finish();
    }
    return std::nullopt;
}

FixOutcome QuitAttempt::finish() {
    if (!outcome_) {
        outcome_ = allTerminated() ? FixOutcome::done() : FixOutcome::stillRunning();
    }
    return *outcome_;
}

bool QuitAttempt::allTerminated() const {
    return std::ranges::all_of(applications_,
                               [](const auto& application) { return application->isTerminated(); });
}

} // namespace pacelet
