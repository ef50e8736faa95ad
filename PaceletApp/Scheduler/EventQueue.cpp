#include "PaceletApp/Scheduler/EventQueue.h"

#include "Core/Support/Precondition.h"

namespace pacelet {

EventQueue::Ticket EventQueue::add(MonotonicTime due, Action action) {
    const Ticket ticket{due, arrivals_++};
    events_.emplace(ticket, std::move(action));
    return ticket;
}

EventQueue::Ticket EventQueue::move(Ticket ticket, MonotonicTime due) {
    auto node = events_.extract(ticket);
    precondition(!node.empty(), "an event is moved that no longer waits");
    node.key() = Ticket{due, arrivals_++};
    const Ticket moved = node.key();
    events_.insert(std::move(node));
    return moved;
}

std::optional<MonotonicTime> EventQueue::nextDue() const {
    if (events_.empty()) {
        return std::nullopt;
    }
    return events_.begin()->first.first;
}

EventQueue::Action EventQueue::takeFirst() {
    precondition(!events_.empty(), "an event is taken from an empty queue");
    Action action = std::move(events_.begin()->second);
    events_.erase(events_.begin());
    return action;
}

void EventQueue::runDue(MonotonicTime now) {
    const std::uint64_t present = arrivals_;
    // Newcomers may be due as well, even in front; they are skipped by their order of arrival.
    auto next = events_.begin();
    while (next != events_.end() && next->first.first <= now) {
        if (next->first.second >= present) {
            ++next;
            continue;
        }
        const Ticket ticket = next->first;
        const Action action = std::move(next->second);
        events_.erase(next);
        action();
        next = events_.lower_bound(ticket);
    }
}

} // namespace pacelet
