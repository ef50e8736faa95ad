#pragma once

#include "Hosts/Linux/Systemd/Bus.h"
#include "Hosts/Linux/Systemd/Unit.h"

#include <optional>
#include <vector>

namespace pacelet::Linux {

/// The loaded services of the service manager on this bus, in its order; nothing when it does not
/// answer. A manager that falls silent in the middle leaves the later services without a pid.
std::optional<std::vector<Unit>> listUnits(sd_bus* bus);

} // namespace pacelet::Linux
