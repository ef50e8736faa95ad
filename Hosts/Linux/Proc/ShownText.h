#pragma once

#include <string>
#include <string_view>

namespace pacelet::Linux {

/// `text` as it may stand in a line of a listing: valid UTF-8, every control character replaced by
/// a question mark.
std::string shownText(std::string_view text);

/// A path for the last column: as above, and never empty.
std::string shownPath(std::string_view path);

/// A name for a column between others: as above, and its blanks become underscores.
std::string shownWord(std::string_view word);

/// The arguments of a command line that the kernel keeps with a NUL behind each, joined by blanks.
std::string shownArguments(std::string_view commandLine);

} // namespace pacelet::Linux
