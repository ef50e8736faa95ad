#pragma once

#include "Hosts/Linux/LinuxHost.h"

namespace pacelet::truth {

/// Two programs, one loading and one sending, each at a rate that the line gives it: prints what
/// the traffic list says of them, and tells whether it is true.
bool trafficIsTrue(Linux::LinuxHost& host);

} // namespace pacelet::truth
