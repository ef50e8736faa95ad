#pragma once

#include <optional>
#include <string_view>

namespace pacelet {

/// What the user may do with a process.
enum class Verdict { safe, review, leave };

std::string_view rawValue(Verdict verdict);
std::string_view label(Verdict verdict);
std::optional<Verdict> verdictFromRawValue(std::string_view rawValue);

} // namespace pacelet
