#include "Hosts/Linux/Systemd/LaunchctlTool.h"

#include "Hosts/Linux/Proc/ShownText.h"
#include "Hosts/Linux/Systemd/UnitGroups.h"

#include <fmt/format.h>
#include <iterator>

namespace pacelet::Linux::LaunchctlTool {

std::string listing(std::span<const Unit> units) {
    std::string text = "PID\tStatus\tLabel\n";
    for (const Unit& unit : units) {
        fmt::format_to(std::back_inserter(text), "{}\t0\t{}\n", unit.pid, shownPath(unit.name));
    }
    return text;
}

Shell::Output run(const std::vector<std::string>& arguments, const Places& places) {
    if (arguments != std::vector<std::string>{"list"}) {
        return {1, "", "launchctl: unknown arguments\nusage: launchctl list\n"};
    }
    return {0, listing(readUnitGroups(places.cgroupFolder, places.procFolder, places.uid)), ""};
}

} // namespace pacelet::Linux::LaunchctlTool
