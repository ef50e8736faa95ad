#pragma once

#include "Core/Support/Time.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace pacelet {

/// What is to happen when, earliest first; what is due at one moment keeps its order of arrival.
class EventQueue {
public:
    using Action = std::function<void()>;

    /// Names one event, and where it stands in the order.
    using Ticket = std::pair<MonotonicTime, std::uint64_t>;

    Ticket add(MonotonicTime due, Action action);

    /// Moves an event that still waits to `due`, behind all that is due then.
    Ticket move(Ticket ticket, MonotonicTime due);

    std::optional<MonotonicTime> nextDue() const;

    /// Takes the first event out. There must be one.
    Action takeFirst();

    /// Runs what is due at `now`, and leaves to a later call what that adds.
    void runDue(MonotonicTime now);

    std::size_t size() const { return events_.size(); }

private:
    std::map<Ticket, Action> events_;
    std::uint64_t arrivals_ = 0;
};

} // namespace pacelet
