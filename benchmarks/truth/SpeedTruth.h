#pragma once

#include "Hosts/Linux/LinuxHost.h"

#include <vector>

namespace pacelet::truth {

/// Tests the speed of lines of these rates down, in Mbit/s, that differ in delay and queue, prints
/// a table, and tells whether all of it was true.
bool speedIsTrue(Linux::LinuxHost& host, const std::vector<double>& rates);

} // namespace pacelet::truth
