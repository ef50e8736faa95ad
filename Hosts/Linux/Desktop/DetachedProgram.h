#pragma once

#include <string>
#include <vector>

namespace pacelet::Linux {

/// Starts a program that goes on by itself: in a session of its own, nobody's child that would have
/// to be waited for, with none of our descriptors and no standard streams. `command` is the path of
/// the program and its arguments; an empty `folder` means ours. False when it could not be started.
bool startDetached(const std::vector<std::string>& command, const std::string& folder = {});

} // namespace pacelet::Linux
