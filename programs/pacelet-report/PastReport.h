#pragma once

#include "Core/Platform/OperatingSystem.h"
#include "Core/Support/Time.h"
#include "Core/Usage/CauseJournal.h"

#include <string>

/// What slowed the machine down over a stretch of time, longest first.
namespace pacelet::report {

/// As text, a line a cause; `span` is that stretch, up to `now`. Times are those of the local
/// clock.
std::string renderPast(const CauseJournal& journal, Seconds span, TimePoint now,
                       OperatingSystem system);

/// As one JSON object: "since" and "until", and "causes", each with its kind, name, severity,
/// "seconds", "times", the minute in which it stood "last" and the "highest" figure (bytes for
/// memory, else percent of one core). Times are those of UTC.
std::string renderPastJson(const CauseJournal& journal, Seconds span, TimePoint now);

} // namespace pacelet::report
