#pragma once

#include <cstddef>
#include <string_view>

/// What a property list may be like. The decoder recurses into what it reads, repeats shared parts
/// of a binary list and moves the rest of a text for each entity in it, so that a small hostile
/// file could take all the stack, the memory or the time there is; and it takes an XML list that
/// was cut off for a whole one. Real launch jobs and bundle descriptions stay far below the limits.
namespace pacelet::PropertyListLimits {

inline constexpr std::size_t largestFile = std::size_t{2} << 20;
inline constexpr std::size_t deepestNesting = 128;
inline constexpr std::size_t mostNodes = std::size_t{1} << 17; ///< shared ones each time counted
inline constexpr std::size_t mostText = std::size_t{16} << 20; ///< bytes of texts and data, so too

/// Whether `bytes` may be handed to the decoder: small enough and, if they are no binary list, XML
/// in which every element of a list is closed and every key has its value. Says nothing on what the
/// values are.
bool allow(std::string_view bytes);

} // namespace pacelet::PropertyListLimits
