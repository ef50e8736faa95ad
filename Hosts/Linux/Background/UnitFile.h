#pragma once

#include <string>
#include <string_view>

namespace pacelet::Linux {

/// What we take from the file of a unit of systemd.
struct UnitFile {
    std::string description; ///< with its places for the instance's name
    std::string program;     ///< that it starts first; empty for a mere shell or interpreter
    std::string starts;      ///< the unit that a timer, socket or path starts, if it says so
    bool isRestarted = false;

    bool operator==(const UnitFile&) const = default;
};

UnitFile parseUnitFile(std::string_view text);

/// A description of the unit `name` with the places for its names filled in; empty when a place
/// of another kind is left.
std::string filledIn(std::string_view description, std::string_view name);

/// The template of an instance: "a@.service" of "a@b.service". Empty for a unit that is none.
std::string templateOf(std::string_view name);

} // namespace pacelet::Linux
