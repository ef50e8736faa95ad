#pragma once

#include "Core/Usage/CauseJournal.h"
#include "Core/Usage/CauseMinute.h"

#include <cstdint>
#include <string>

/// The text of a file of causes: one compact JSON object a line.
namespace pacelet::CauseLines {

/// The minute as one line, its line feed included; its figures must be finite.
std::string encode(const CauseMinute& minute);

/// Adds the minutes of a whole file to `journal`, in file order, but for those before `earliest`.
/// `text` gets some padding at its end. A line that holds no minute, all of it, is left out and
/// costs no other: it is a JSON object with "t", a minute of the calendar, and "causes", a list of
/// objects with "kind", "severity", "id", "name", "seconds" (above 0, at most 60), "mean" and
/// "max". Other keys are ignored.
void decode(std::string& text, std::int64_t earliest, CauseJournal& journal);

} // namespace pacelet::CauseLines
