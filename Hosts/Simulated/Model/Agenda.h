#pragma once

#include "Core/Support/Time.h"

#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace pacelet::Simulated {

struct World;

/// Something that will happen to the world.
using Event = std::function<void(World&)>;

/// What is to happen, by the awake time at which it does. Events of one moment keep their order.
class Agenda {
public:
    void add(Seconds at, Event event) { events_.emplace(at, std::move(event)); }

    /// Takes out the next event if it falls due at `end` or earlier.
    std::optional<std::pair<Seconds, Event>> takeDue(Seconds end) {
        if (events_.empty() || events_.begin()->first > end) {
            return std::nullopt;
        }
        auto node = events_.extract(events_.begin());
        return std::pair{node.key(), std::move(node.mapped())};
    }

private:
    std::multimap<Seconds, Event> events_;
};

} // namespace pacelet::Simulated
