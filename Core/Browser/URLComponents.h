#pragma once

#include <optional>
#include <string_view>

namespace pacelet {

/// The pieces of a URL that the program looks at, as views into its text.
struct URLComponents {
    std::string_view scheme; ///< empty, anywhere at all, when there is none
    std::string_view host;   ///< so, too; an IP literal with its brackets
};

/// Takes a URL, or a relative reference, apart by the grammar of RFC 3986. Nothing when `text` does
/// not follow it, as with blanks, letters outside ASCII or a half percent-encoding.
std::optional<URLComponents> parseURL(std::string_view text);

} // namespace pacelet
