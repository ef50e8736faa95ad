#pragma once

#include <string>
#include <string_view>

namespace pacelet::Linux::ManualPage {

/// What the first section of a manual page's source says that `name` is: the text behind its dash,
/// without the marks of the typesetter. Empty when the page is of something else.
std::string line(std::string_view source, std::string_view name);

/// The same of a page in `folder` ("/usr/share/man"), for one of its sections, such as '8'. Pages
/// that only point to another one are followed. Empty without such a page.
std::string line(const std::string& folder, char section, const std::string& name);

/// The file of a page, whether it exists or not.
std::string file(const std::string& folder, char section, std::string_view name);

} // namespace pacelet::Linux::ManualPage
