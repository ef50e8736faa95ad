#pragma once

#include "Hosts/Simulated/Scenarios/MacBuilder.h"

/// The machines that can be simulated, one function each.
namespace pacelet::Simulated::Scenarios {

void quiet(MacBuilder& mac);

} // namespace pacelet::Simulated::Scenarios
