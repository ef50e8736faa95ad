#include "Hosts/Linux/Systemd/LaunchctlTool.h"

#include "Hosts/Linux/Proc/ShownText.h"
#include "Hosts/Linux/Systemd/Bus.h"
#include "Hosts/Linux/Systemd/UnitGroups.h"
#include "Hosts/Linux/Systemd/UnitList.h"

#include <fmt/format.h>
#include <iterator>

namespace pacelet::Linux::LaunchctlTool {

namespace {

/// Of one call; a manager answers within milliseconds, even while it starts services.
constexpr std::chrono::microseconds callLimit = std::chrono::seconds{1};

std::optional<std::vector<Unit>> unitsOn(BusKind kind) {
    const Bus bus = openBus(kind, callLimit);
    return bus != nullptr ? listUnits(bus.get()) : std::nullopt;
}

std::vector<Unit> readUnits(const Places& places) {
    auto units = unitsOn(BusKind::system);
    if (!units) {
        return readUnitGroups(places.cgroupFolder, places.procFolder, places.uid);
    }
    if (auto own = unitsOn(BusKind::user)) {
        units->insert(units->end(), std::make_move_iterator(own->begin()),
                      std::make_move_iterator(own->end()));
    }
    return *std::move(units);
}

} // namespace

std::string listing(std::span<const Unit> units) {
    std::string text = "PID\tStatus\tLabel\n";
    for (const Unit& unit : units) {
        const std::string pid = unit.pid ? std::to_string(*unit.pid) : "-";
        fmt::format_to(std::back_inserter(text), "{}\t{}\t{}\n", pid, unit.status,
                       shownPath(unit.name));
    }
    return text;
}

Shell::Output run(const std::vector<std::string>& arguments, const Places& places) {
    if (arguments != std::vector<std::string>{"list"}) {
        return {1, "", "launchctl: unknown arguments\nusage: launchctl list\n"};
    }
    return {0, listing(readUnits(places)), ""};
}

} // namespace pacelet::Linux::LaunchctlTool
