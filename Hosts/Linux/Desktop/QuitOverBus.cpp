#include "Hosts/Linux/Desktop/QuitOverBus.h"

#include "Core/Support/Files.h"
#include "Hosts/Linux/Apps/DesktopEntry.h"
#include "Hosts/Linux/Systemd/Bus.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

namespace {

/// Some programs have connections that never answer beside the one that does.
constexpr int mostSilences = 2;
/// The bus itself answers late on a crowded machine, and never not at all.
constexpr int daemonsShare = 4;

/// What quits an application.
struct QuitCall {
    std::string name;
    std::string path;
    const char* interface;
    const char* method;
    const char* action = nullptr; ///< the method's argument
    bool takesParameters = false; ///< two empty ones follow the action
    bool asks = true;             ///< the user about unsaved work
};

BusMessage answerOf(sd_bus* bus, const std::string& name, const std::string& path,
                    const char* interface, const char* method, int& result) {
    sd_bus_message* reply = nullptr;
    result =
        sd_bus_call_method(bus, name.c_str(), path.c_str(), interface, method, nullptr, &reply, "");
    return BusMessage{reply};
}

bool isNumber(std::string_view name) {
    return name.starts_with(':');
}

/// The names on the bus, the numbers of its connections behind them; without our own.
std::vector<std::string> namesOn(sd_bus* bus) {
    char** listed = nullptr;
    const char* own = nullptr;
    std::vector<std::string> names;
    if (sd_bus_list_names(bus, &listed, nullptr) < 0 || sd_bus_get_unique_name(bus, &own) < 0) {
        return names;
    }
    for (char** name = listed; *name != nullptr; ++name) {
        if (std::string_view{*name} != own) {
            names.emplace_back(*name);
        }
        std::free(*name);
    }
    std::free(listed);
    std::stable_partition(names.begin(), names.end(),
                          [](std::string_view name) { return !isNumber(name); });
    return names;
}

bool isOwnedBy(sd_bus* bus, const std::string& name, std::span<const std::int32_t> pids) {
    sd_bus_creds* creds = nullptr;
    pid_t pid = 0;
    const bool isKnown = sd_bus_get_name_creds(bus, name.c_str(), SD_BUS_CREDS_PID, &creds) >= 0 &&
                         sd_bus_creds_get_pid(creds, &pid) >= 0;
    sd_bus_creds_unref(creds);
    return isKnown && std::find(pids.begin(), pids.end(), pid) != pids.end();
}

/// The object of an application with this name.
std::string objectPath(std::string_view name) {
    std::string path = "/" + std::string{name};
    std::replace(path.begin(), path.end(), '.', '/');
    std::replace(path.begin(), path.end(), '-', '_');
    return path;
}

/// What KDE calls the first window of the program "org.kde.kate-4711".
std::string firstWindowPath(std::string_view name) {
    const std::size_t dash = name.find_last_of('-');
    name = name.substr(0, dash);
    const std::size_t dot = name.find_last_of('.');
    std::string program{dot == std::string_view::npos ? name : name.substr(dot + 1)};
    std::replace_if(
        program.begin(), program.end(),
        [](unsigned char character) { return std::isalnum(character) == 0; }, '_');
    return "/" + program + "/MainWindow_1";
}

bool isTrue(sd_bus_message* message) {
    int value = 0;
    return message != nullptr && sd_bus_message_read(message, "b", &value) > 0 && value != 0;
}

bool listsQuit(sd_bus_message* message) {
    char** actions = nullptr;
    bool isListed = false;
    if (message == nullptr || sd_bus_message_read_strv(message, &actions) < 0) {
        return false;
    }
    for (char** action = actions; actions != nullptr && *action != nullptr; ++action) {
        isListed = isListed || std::string_view{*action} == "quit";
        std::free(*action);
    }
    std::free(actions);
    return isListed;
}

bool entryHasQuit(const DesktopPlaces& places, const std::string& identifier) {
    const auto file = findEntryFile(places, identifier);
    std::string text;
    if (!file || readFile(*file, mostEntryBytes, text)) {
        return false;
    }
    const auto entry = parseDesktopEntry(text);
    return entry && std::count(entry->actions.begin(), entry->actions.end(), "quit") != 0;
}

std::optional<QuitCall> playersQuit(sd_bus* bus, const std::string& name, int& result) {
    constexpr const char* path = "/org/mpris/MediaPlayer2";
    constexpr const char* interface = "org.mpris.MediaPlayer2";
    int canQuit = 0;
    result = sd_bus_get_property_trivial(bus, name.c_str(), path, interface, "CanQuit", nullptr,
                                         'b', &canQuit);
    return result >= 0 && canQuit != 0 ? std::optional{QuitCall{name, path, interface, "Quit"}}
                                       : std::nullopt;
}

/// What quits the application with this name. Several copies of one run under no name of their own,
/// and have their objects where the id of the menu entry says. `result` tells how the last call
/// went.
std::optional<QuitCall> quitOf(sd_bus* bus, const std::string& name, const std::string& identifier,
                               bool entryNamesQuit, int& result) {
    if (name.starts_with("org.mpris.MediaPlayer2.")) {
        return playersQuit(bus, name, result);
    }
    std::string path = objectPath(isNumber(name) ? identifier : name);
    if (listsQuit(answerOf(bus, name, path, "org.gtk.Actions", "List", result).get())) {
        return QuitCall{name, path, "org.gtk.Actions", "Activate", "quit", true};
    }
    if (isNumber(name) || result == -ETIMEDOUT) {
        return std::nullopt;
    }
    if (entryNamesQuit) {
        return QuitCall{name, path, "org.freedesktop.Application", "ActivateAction", "quit", true};
    }
    path = firstWindowPath(name);
    sd_bus_message* reply = nullptr;
    result = sd_bus_call_method(bus, name.c_str(), path.c_str(), "org.kde.KMainWindow",
                                "actionIsEnabled", nullptr, &reply, "s", "file_quit");
    if (isTrue(BusMessage{reply}.get())) {
        return QuitCall{name, path, "org.kde.KMainWindow", "activateAction", "file_quit"};
    }
    const BusMessage description = answerOf(
        bus, name, "/MainApplication", "org.freedesktop.DBus.Introspectable", "Introspect", result);
    const char* text = nullptr;
    constexpr const char* qt = "org.qtproject.Qt.QCoreApplication";
    if (description != nullptr && sd_bus_message_read(description.get(), "s", &text) > 0 &&
        std::string_view{text}.find(qt) != std::string_view::npos) {
        // Before its sixth version, Qt asks nobody then.
        return QuitCall{name, "/MainApplication", qt, "quit", nullptr, false, false};
    }
    return std::nullopt;
}

bool send(sd_bus* bus, const QuitCall& call) {
    sd_bus_message* request = nullptr;
    if (sd_bus_message_new_method_call(bus, &request, call.name.c_str(), call.path.c_str(),
                                       call.interface, call.method) < 0) {
        return false;
    }
    const BusMessage message{request};
    // It answers when its user has, if at all.
    sd_bus_message_set_expect_reply(request, 0);
    if (call.takesParameters) {
        sd_bus_message_append(request, "sava{sv}", call.action, 0, 0);
    } else if (call.action != nullptr) {
        sd_bus_message_append(request, "s", call.action);
    }
    return sd_bus_send(bus, request, nullptr) >= 0 && sd_bus_flush(bus) >= 0;
}

} // namespace

bool quitOverBus(const std::string& identifier, std::span<const std::int32_t> pids,
                 const DesktopPlaces& places, Asking asking, std::chrono::microseconds patience) {
    const Bus bus = openBus(BusKind::user, patience * daemonsShare);
    if (bus == nullptr) {
        return false;
    }
    const std::vector<std::string> names = namesOn(bus.get());
    sd_bus_set_method_call_timeout(bus.get(), static_cast<std::uint64_t>(patience.count()));
    std::optional<QuitCall> found;
    int silences = 0;
    bool hasAnswered = false;
    for (const std::string& name : names) {
        if ((found && found->asks) || silences == mostSilences) {
            break;
        }
        // In a sandbox, the connection is that of a process outside.
        if (name != identifier && !isOwnedBy(bus.get(), name, pids)) {
            continue;
        }
        const bool entryNamesQuit = name == identifier && entryHasQuit(places, identifier);
        int result = 0;
        auto call = quitOf(bus.get(), name, identifier, entryNamesQuit, result);
        const bool isSilent = result == -ETIMEDOUT;
        silences += isSilent ? 1 : 0;
        hasAnswered = hasAnswered || !isSilent;
        if (call && (!found || (call->asks && !found->asks))) {
            found = std::move(call);
        }
    }
    if (!found) {
        return silences > 0 && !hasAnswered;
    }
    return asking == Asking::look ? found->asks : send(bus.get(), *found);
}

} // namespace pacelet::Linux
