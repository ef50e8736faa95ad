#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// What we take from the file of a unit of systemd, or from a piece that changes one.
struct UnitFile {
    std::string description;        ///< with its places for the instance's name
    std::string program;            ///< that it starts first; empty for a mere shell or interpreter
    bool hasCommand = false;        ///< it starts something
    bool takesCommandsBack = false; ///< those that were set before it
    std::string starts;             ///< the unit that a timer, socket or path starts, if it says so
    std::optional<bool> isRestarted;

    bool operator==(const UnitFile&) const = default;
};

UnitFile parseUnitFile(std::string_view text);

/// Sets in `unit` what the piece says.
void change(UnitFile& unit, const UnitFile& piece);

/// A description of the unit `name` with the places for its names filled in; empty when a place
/// of another kind is left.
std::string filledIn(std::string_view description, std::string_view name);

/// The folders whose pieces change a unit, as they stand beside its file, the weakest first: for
/// "a-b.service" these are "service.d", "a-.service.d" and "a-b.service.d".
std::vector<std::string> pieceFolders(std::string_view name);

/// The template of an instance: "a@.service" of "a@b.service". Empty for a unit that is none.
std::string templateOf(std::string_view name);

} // namespace pacelet::Linux
