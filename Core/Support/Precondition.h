#pragma once

#include <string_view>

namespace pacelet {

/// Prints `message` on standard error and aborts, in release builds too. For breaches of the
/// program's own invariants, never for bad input.
[[noreturn]] void invariantBreach(std::string_view message);

/// Stops the program with `message` unless `condition` holds.
inline void precondition(bool condition, std::string_view message) {
    if (!condition) [[unlikely]] {
        invariantBreach(message);
    }
}

} // namespace pacelet
