#pragma once

#include "Hosts/Recorded/Capture.h"

namespace pacelet::Recorded {

/// Whether every answer is of its call's kind, every text is plain UTF-8, and no figure is beyond
/// what machines have: then no sum over what a capture tells leaves its range.
bool isPossible(const Capture& capture);

} // namespace pacelet::Recorded
