#include "Hosts/Linux/Systemd/UnitList.h"

#include <string_view>

namespace pacelet::Linux {

namespace {

constexpr const char* managerName = "org.freedesktop.systemd1";
constexpr const char* managerPath = "/org/freedesktop/systemd1";
constexpr const char* managerInterface = "org.freedesktop.systemd1.Manager";
constexpr const char* serviceInterface = "org.freedesktop.systemd1.Service";

/// One row of the manager's answer; the texts belong to the message.
struct ListedUnit {
    const char* name = nullptr;
    const char* loadState = nullptr;
    const char* activeState = nullptr;
    const char* path = nullptr;
};

bool readRow(sd_bus_message* rows, ListedUnit& unit) {
    const char* ignored = nullptr;
    std::uint32_t job = 0;
    return sd_bus_message_read(rows, "(ssssssouso)", &unit.name, &ignored, &unit.loadState,
                               &unit.activeState, &ignored, &ignored, &unit.path, &job, &ignored,
                               &ignored) > 0;
}

BusMessage askForUnits(sd_bus* bus) {
    sd_bus_message* request = nullptr;
    if (sd_bus_message_new_method_call(bus, &request, managerName, managerPath, managerInterface,
                                       "ListUnitsByPatterns") < 0) {
        return nullptr;
    }
    const BusMessage call{request};
    // Where the bus has no service manager, none is to be started.
    sd_bus_message_set_auto_start(request, 0);
    sd_bus_message* reply = nullptr;
    if (sd_bus_message_append(request, "asas", 0, 1, "*.service") < 0 ||
        sd_bus_call(bus, request, 0, nullptr, &reply) < 0) {
        return nullptr;
    }
    return BusMessage{reply};
}

/// A number of the service; false when the manager does not tell it.
template<typename Number>
bool readProperty(sd_bus* bus, const char* path, const char* name, char type, Number& value) {
    return sd_bus_get_property_trivial(bus, managerName, path, serviceInterface, name, nullptr,
                                       type, &value) >= 0;
}

/// What only the service itself tells. False when it did not answer.
bool readDetails(sd_bus* bus, const ListedUnit& listed, Unit& unit) {
    const std::string_view state = listed.activeState;
    if (state == "failed") {
        return readProperty(bus, listed.path, "ExecMainStatus", 'i', unit.status);
    }
    if (state == "inactive") {
        return true;
    }
    std::uint32_t pid = 0;
    if (!readProperty(bus, listed.path, "MainPID", 'u', pid)) {
        return false;
    }
    if (pid != 0) {
        unit.pid = static_cast<std::int32_t>(pid);
    }
    return true;
}

} // namespace

std::optional<std::vector<Unit>> listUnits(sd_bus* bus) {
    const BusMessage rows = askForUnits(bus);
    if (rows == nullptr ||
        sd_bus_message_enter_container(rows.get(), SD_BUS_TYPE_ARRAY, "(ssssssouso)") < 0) {
        return std::nullopt;
    }
    std::vector<Unit> units;
    // A service may go between the list and the question; two in a row without an answer is
    // silence.
    int unanswered = 0;
    for (ListedUnit listed; readRow(rows.get(), listed);) {
        if (std::string_view{listed.loadState} != "loaded") {
            continue;
        }
        Unit& unit = units.emplace_back();
        unit.name = listed.name;
        if (unanswered < 2) {
            unanswered = readDetails(bus, listed, unit) ? 0 : unanswered + 1;
        }
    }
    return units;
}

} // namespace pacelet::Linux
