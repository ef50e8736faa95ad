#pragma once

#include "Core/Usage/MinuteRecord.h"

#include <cstdint>
#include <string>
#include <vector>

/// The text of a history file: one compact JSON object a line.
namespace pacelet::HistoryLines {

/// The record as one line, its line feed included. Floats are written in their shortest form that
/// reads back unchanged; they must be finite.
std::string encode(const MinuteRecord& record);

/// Appends the records of a whole file to `records`, in file order, but for those before the
/// minute `earliest`. `text` gets some padding at its end, which the parser needs.
///
/// A line that holds no record is left out and costs no other. A record is a JSON object with all
/// seven keys, in any order; other keys are ignored, and of two equal keys the later one counts.
/// An integer must be written as one (neither 1.0 nor "1") and fit 64 bits. A text that is not
/// UTF-8 throughout holds no records at all.
void decode(std::string& text, std::int64_t earliest, std::vector<MinuteRecord>& records);

} // namespace pacelet::HistoryLines
