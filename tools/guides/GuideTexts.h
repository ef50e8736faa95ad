#pragma once

#include "Core/Knowledge/FixID.h"
#include "Core/Knowledge/Verdict.h"

#include <string_view>

namespace pacelet::guides {

/// The verdict in a sentence or two.
std::string_view advice(Verdict verdict);

/// What a fix is good for, in a sentence or two.
std::string_view advice(FixID fix);

} // namespace pacelet::guides
