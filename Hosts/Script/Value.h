#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace pacelet::Script {

// Objects of a browser, by their ids: they may be gone when they are used. `index` is where the
// object stood, and most likely stands.
struct WindowReference {
    std::int64_t window = 0;
    std::size_t index = 0;
};
struct TabReference {
    WindowReference window;
    std::int64_t tab = 0;
    std::size_t index = 0;
};

struct Value;
using List = std::vector<Value>;

struct Value {
    std::variant<std::monostate, std::int64_t, bool, std::string, WindowReference, TabReference,
                 List>
        held;
};

/// Whether the two are equal as the language has it: a number never equals a text, and texts are
/// compared without regard to case.
bool equal(const Value& left, const Value& right);

/// The value as a text, or as the tool prints a result; an object names itself.
std::string asText(const Value& value);

} // namespace pacelet::Script
