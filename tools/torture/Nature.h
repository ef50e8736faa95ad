#pragma once

#include "Hosts/Simulated/Model/Random.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "PaceletApp/Scheduler/VirtualScheduler.h"

#include <string>

/// What happens to the machine by itself. Each answers in a few words what it was.
namespace pacelet::torture::Nature {

/// Work comes, grows, moves, goes.
std::string change(Simulated::SimulatedMac& mac, Simulated::Random& random);

/// The wall clock is set, to shortly before the end of a day or a month maybe.
std::string setClock(Simulated::SimulatedMac& mac, Simulated::Random& random);

/// One more thing fails, until all is mended.
std::string fail(Simulated::SimulatedMac& mac, VirtualScheduler& scheduler,
                 const std::string& history, Simulated::Random& random);
std::string mend(Simulated::SimulatedMac& mac, VirtualScheduler& scheduler);

} // namespace pacelet::torture::Nature
