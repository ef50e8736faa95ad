#pragma once

#include "Core/Support/Time.h"

#include <string>

namespace pacelet {

/// How long ago something was, in the largest unit that fits and with names for the nearest dates:
/// "now", "3 minutes ago", "yesterday", "last week". After the clock was set back, how long it is
/// still to come: "in 3 minutes", "tomorrow".
std::string relativeDate(Seconds age);

} // namespace pacelet
