#pragma once

#include <simdjson.h>
#include <string>
#include <string_view>

namespace pacelet {

/// `json` with the numbers that the parser refuses in a form that it takes: an integer beyond 64
/// bits as a float, and what is beyond floats as `false`, which is no number to whoever asks for
/// one. All else stands as it is, faults included.
std::string fittedNumbers(std::string_view json);

/// Parses one document, a byte order mark ahead of it or not. A number that does not fit spoils the
/// value that it stands for alone, and that not at all where nobody reads it.
simdjson::simdjson_result<simdjson::dom::element> parseJson(simdjson::dom::parser& parser,
                                                            std::string_view json);

} // namespace pacelet
