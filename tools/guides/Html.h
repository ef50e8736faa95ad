#pragma once

#include <string>
#include <string_view>

namespace pacelet::guides {

/// `text` as it stands in HTML, between tags and within quoted attributes. Control characters,
/// which no document may hold, become blanks.
std::string escaped(std::string_view text);

/// One element with a text in it, such as `<p>…</p>`. `opening` is its name with its attributes.
std::string textElement(std::string_view opening, std::string_view text);

} // namespace pacelet::guides
