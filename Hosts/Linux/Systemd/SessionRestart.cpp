#include "Hosts/Linux/Systemd/SessionRestart.h"

#include "Hosts/Linux/Systemd/Bus.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

namespace pacelet::Linux {

namespace {

constexpr std::chrono::microseconds askLimit = std::chrono::seconds{2};
/// The user may sit at a question of somebody else's for this long.
constexpr std::chrono::microseconds patience = std::chrono::minutes{3};
constexpr std::uint64_t betweenLooks = 100'000;

/// A method of somebody on the bus.
struct Method {
    const char* owner = nullptr;
    const char* path = nullptr;
    const char* interface = nullptr;
    const char* name = nullptr; ///< null: there is no such method
    const char* types = "";
    std::array<int, 3> arguments{};
};

/// A session manager, known by a name that it owns.
struct SessionManager {
    const char* name;
    bool asks;                  ///< the user, before it restarts the machine
    std::array<Method, 2> ways; ///< the first that it knows; the second may be missing
    Method permission;          ///< tells whether the user may; may be missing
};

constexpr const char* gnome = "org.gnome.SessionManager";
constexpr const char* gnomePath = "/org/gnome/SessionManager";
constexpr const char* plasma = "org.kde.ksmserver";
constexpr const char* xfce = "org.xfce.SessionManager";
constexpr const char* xfcePath = "/org/xfce/SessionManager";
constexpr const char* xfceInterface = "org.xfce.Session.Manager";
constexpr const char* plasmaPrompt = "org.kde.LogoutPrompt";

constexpr std::array sessionManagers{
    // Cinnamon's and MATE's go by this name, too. MATE's cannot restart with a question of its own,
    // but has a dialog with a button for it.
    SessionManager{
        gnome,
        true,
        {Method{gnome, gnomePath, gnome, "Reboot"}, Method{gnome, gnomePath, gnome, "Shutdown"}},
        Method{gnome, gnomePath, gnome, "CanShutdown"}},
    // Of older ones, the server itself asks: with a question, for a restart, as set up.
    SessionManager{plasma,
                   true,
                   {Method{plasmaPrompt, "/LogoutPrompt", plasmaPrompt, "promptReboot"},
                    Method{plasma, "/KSMServer", "org.kde.KSMServerInterface", "logout", "iii",
                           std::array{1, 1, -1}}},
                   Method{}},
    // With a question, it would follow the user's settings, which may be to log out without one.
    SessionManager{
        xfce,
        false,
        {Method{xfce, xfcePath, xfceInterface, "Restart", "b", std::array{1, 0, 0}}, Method{}},
        Method{xfce, xfcePath, xfceInterface, "CanRestart"}},
};

constexpr const char* rebooter = "org.freedesktop.login1";
constexpr const char* rebootPath = "/org/freedesktop/login1";
constexpr const char* rebootInterface = "org.freedesktop.login1.Manager";

bool hasOwner(sd_bus* bus, const char* name) {
    sd_bus_message* reply = nullptr;
    int isOwned = 0;
    if (sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus", "NameHasOwner", nullptr, &reply, "s",
                           name) < 0) {
        return false;
    }
    const BusMessage answer{reply};
    return sd_bus_message_read(reply, "b", &isOwned) > 0 && isOwned != 0;
}

const SessionManager* sessionManagerOn(sd_bus* bus) {
    const auto found =
        std::find_if(sessionManagers.begin(), sessionManagers.end(),
                     [&](const SessionManager& row) { return hasOwner(bus, row.name); });
    return found == sessionManagers.end() ? nullptr : &*found;
}

struct Answer {
    bool hasCome = false;
    std::string error; ///< its name; empty for success
};

int onAnswer(sd_bus_message* message, void* data, sd_bus_error*) {
    Answer& answer = *static_cast<Answer*>(data);
    answer.hasCome = true;
    if (const sd_bus_error* const error = sd_bus_message_get_error(message)) {
        answer.error = error->name;
    }
    return 0;
}

bool contains(std::string_view text, std::span<const std::string_view> parts) {
    return std::any_of(parts.begin(), parts.end(), [&](std::string_view part) {
        return text.find(part) != std::string_view::npos;
    });
}

bool isUnknown(std::string_view error) {
    constexpr auto signs =
        std::to_array<std::string_view>({"UnknownMethod", "UnknownObject", "UnknownInterface",
                                         "ServiceUnknown", "NameHasNoOwner", "Spawn"});
    return contains(error, signs);
}

RestartEnd endOf(const Answer& answer) {
    constexpr auto refusals =
        std::to_array<std::string_view>({"AccessDenied", "InteractiveAuthorizationRequired",
                                         "NotAuthorized", "LockedDown", "PermissionDenied"});
    // GIO's own number for what a user has cancelled stands at the end.
    constexpr auto cancels =
        std::to_array<std::string_view>({"Cancelled", "g_2dio_2derror_2dquark.Code19"});
    // Who has not answered has the question, or has gone down with the session.
    constexpr auto silences =
        std::to_array<std::string_view>({"NoReply", "Timeout", "Disconnected"});
    if (!answer.hasCome || answer.error.empty() || contains(answer.error, silences)) {
        return RestartEnd::begun;
    }
    if (contains(answer.error, cancels)) {
        return RestartEnd::cancelled;
    }
    return contains(answer.error, refusals) ? RestartEnd::forbidden : RestartEnd::impossible;
}

Answer callPatiently(sd_bus* bus, const Method& method, const std::atomic<bool>& isStopped) {
    Answer answer;
    sd_bus_message* request = nullptr;
    if (sd_bus_message_new_method_call(bus, &request, method.owner, method.path, method.interface,
                                       method.name) < 0) {
        return {true, "UnknownMethod"};
    }
    const BusMessage call{request};
    sd_bus_message_set_allow_interactive_authorization(request, 1);
    const auto& arguments = method.arguments;
    if (*method.types != '\0') {
        sd_bus_message_append(request, method.types, arguments[0], arguments[1], arguments[2]);
    }
    const auto deadline = std::chrono::steady_clock::now() + patience;
    if (sd_bus_call_async(bus, nullptr, request, onAnswer, &answer,
                          static_cast<std::uint64_t>(patience.count())) < 0) {
        return {true, "UnknownMethod"};
    }
    while (!answer.hasCome && !isStopped && std::chrono::steady_clock::now() < deadline) {
        const int progress = sd_bus_process(bus, nullptr);
        if (progress < 0 || (progress == 0 && sd_bus_wait(bus, betweenLooks) < 0)) {
            break;
        }
    }
    return answer;
}

/// A word for yes or no; empty when nobody says one.
std::string permissionOf(sd_bus* bus, const Method& method) {
    sd_bus_message* reply = nullptr;
    if (method.name == nullptr ||
        sd_bus_call_method(bus, method.owner, method.path, method.interface, method.name, nullptr,
                           &reply, "") < 0) {
        return {};
    }
    const BusMessage answer{reply};
    int isAllowed = 0;
    const char* word = nullptr;
    if (sd_bus_message_read(reply, "b", &isAllowed) > 0) {
        return isAllowed != 0 ? "yes" : "no";
    }
    return sd_bus_message_read(reply, "s", &word) > 0 ? word : "";
}

RestartEnd restartBy(sd_bus* bus, const SessionManager& manager, const std::atomic<bool>& stopped) {
    if (permissionOf(bus, manager.permission) == "no") {
        return RestartEnd::forbidden;
    }
    for (const Method& way : manager.ways) {
        if (way.name == nullptr) {
            continue;
        }
        const Answer answer = callPatiently(bus, way, stopped);
        if (!isUnknown(answer.error)) {
            return endOf(answer);
        }
    }
    return RestartEnd::impossible;
}

RestartEnd restartByLoginManager(const std::atomic<bool>& isStopped) {
    const Bus bus = openBus(BusKind::system, askLimit);
    if (bus == nullptr) {
        return RestartEnd::impossible;
    }
    const std::string permission =
        permissionOf(bus.get(), {rebooter, rebootPath, rebootInterface, "CanReboot"});
    if (permission == "no") {
        return RestartEnd::forbidden;
    }
    if (permission != "yes" && permission != "challenge") {
        return RestartEnd::impossible;
    }
    // It may have the user give a password.
    return endOf(callPatiently(
        bus.get(), {rebooter, rebootPath, rebootInterface, "Reboot", "b", {1, 0, 0}}, isStopped));
}

bool hasSessionBus() {
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    std::error_code error;
    return std::getenv("DBUS_SESSION_BUS_ADDRESS") != nullptr ||
           (runtime != nullptr &&
            std::filesystem::exists(std::filesystem::path{runtime} / "bus", error));
}

} // namespace

bool SessionRestart::isPossible() {
    const char* const desktop = std::getenv("XDG_CURRENT_DESKTOP");
    std::error_code error;
    return std::filesystem::exists("/run/systemd/seats", error) ||
           (desktop != nullptr && *desktop != '\0' && hasSessionBus());
}

bool SessionRestart::asksFirst() {
    const Bus bus = openBus(BusKind::user, askLimit);
    const SessionManager* const manager = bus != nullptr ? sessionManagerOn(bus.get()) : nullptr;
    return manager != nullptr && manager->asks;
}

RestartEnd SessionRestart::run() const {
    if (const Bus bus = openBus(BusKind::user, askLimit)) {
        if (const SessionManager* const manager = sessionManagerOn(bus.get())) {
            return restartBy(bus.get(), *manager, isStopped_);
        }
    }
    return restartByLoginManager(isStopped_);
}

} // namespace pacelet::Linux
