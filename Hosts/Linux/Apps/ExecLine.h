#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// The words of an entry's command line: quotes and escapes resolved, the places for files, links
/// and the like ("%U") left out.
std::vector<std::string> splitExecLine(std::string_view exec);

/// The words from the program on: without a leading `env` and the variables that it sets.
std::vector<std::string> execCommand(std::string_view exec);

} // namespace pacelet::Linux
