#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pacelet::Linux {

/// The bytes as text, with the usual alphabet and padding.
std::string base64Encoded(std::string_view bytes);

/// The bytes of such a text; nothing when it is none. What `base64Encoded` wrote reads back.
std::optional<std::string> base64Decoded(std::string_view text);

} // namespace pacelet::Linux
