#pragma once

#include <string_view>

/// What every program of ours does about its standard streams. Any of them may be closed, full or
/// the terminal of somebody who has left, and that must neither end a program nor let its words run
/// into a file that happens to have the same number.
namespace pacelet::StandardStreams {

/// Undoes what a careless parent hands down: opens /dev/null in the place of each standard stream
/// that is closed, has a write to a reader who is gone fail instead of ending the program, and has
/// the system tell again how child processes ended. As the first thing in `main`: whatever is
/// opened before it may get the number of a stream.
void secure();

/// Writes all of `text` to standard output. False when that was not possible.
bool print(std::string_view text);

/// Writes `line`, and the end of a line, to standard error. Nothing comes of it where nobody can
/// read it.
void complain(std::string_view line);

} // namespace pacelet::StandardStreams
