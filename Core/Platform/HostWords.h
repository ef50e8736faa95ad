#pragma once

#include "Core/Platform/OperatingSystem.h"

#include <fmt/format.h>

#include <string>
#include <string_view>

/// Our sentences stand in the source as a Mac's user reads them. This makes of each what is true on
/// the machine in front of the user: "Your Mac" becomes "Your computer" where it is no Mac, and a
/// tip that names a Mac's menu names the way there. On a Mac nothing changes.
///
/// What comes from the machine (names, titles, paths) never goes through here, but is put into the
/// finished sentence: a window called "My Mac" stays what it is.
namespace pacelet::HostWords {

std::string on(OperatingSystem system, std::string_view sentence);

/// The same of a sentence with places for data, which are filled afterwards.
template<typename... Data>
std::string say(OperatingSystem system, fmt::format_string<const Data&...> sentence,
                const Data&... data) {
    const fmt::string_view text = sentence;
    return fmt::vformat(on(system, {text.data(), text.size()}), fmt::make_format_args(data...));
}

} // namespace pacelet::HostWords
