#pragma once

#include <cstddef>
#include <string_view>

/// How large a property list may be. The decoder recurses into what it reads, repeats shared parts
/// of a binary list and moves the rest of a text for each entity in it, so that a small hostile
/// file could take all the stack, the memory or the time there is. Real launch jobs and bundle
/// descriptions stay far below these limits.
namespace pacelet::PropertyListLimits {

inline constexpr std::size_t largestFile = std::size_t{2} << 20;
inline constexpr std::size_t deepestNesting = 128;
inline constexpr std::size_t mostNodes = std::size_t{1} << 17; ///< shared ones each time counted
inline constexpr std::size_t mostText = std::size_t{16} << 20; ///< bytes of texts and data, so too

/// Whether `bytes` may be handed to the decoder. Says nothing on whether they are a property list.
bool allow(std::string_view bytes);

} // namespace pacelet::PropertyListLimits
