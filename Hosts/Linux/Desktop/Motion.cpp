#include "Hosts/Linux/Desktop/Motion.h"

#include "Core/Support/Files.h"
#include "Hosts/Linux/Desktop/KeyFile.h"
#include "Hosts/Linux/Systemd/Bus.h"

namespace pacelet::Linux {

namespace {

constexpr std::chrono::microseconds limit = std::chrono::milliseconds{500};
constexpr std::size_t mostBytes = 1 << 16;

BusMessage askPortal(sd_bus* bus) {
    sd_bus_message* request = nullptr;
    if (sd_bus_message_new_method_call(bus, &request, "org.freedesktop.portal.Desktop",
                                       "/org/freedesktop/portal/desktop",
                                       "org.freedesktop.portal.Settings", "Read") < 0) {
        return nullptr;
    }
    const BusMessage call{request};
    // Where no portal runs, none is to be started for this.
    sd_bus_message_set_auto_start(request, 0);
    sd_bus_message* reply = nullptr;
    if (sd_bus_message_append(request, "ss", "org.gnome.desktop.interface", "enable-animations") <
            0 ||
        sd_bus_call(bus, request, 0, nullptr, &reply) < 0) {
        return nullptr;
    }
    return BusMessage{reply};
}

/// The truth value in a message, within as many variants as the sender likes.
std::optional<bool> readTruth(sd_bus_message* message) {
    char type = 0;
    const char* contents = nullptr;
    while (sd_bus_message_peek_type(message, &type, &contents) > 0 && type == 'v') {
        if (sd_bus_message_enter_container(message, type, contents) < 0) {
            return std::nullopt;
        }
    }
    int value = 0;
    return type == 'b' && sd_bus_message_read(message, "b", &value) > 0 ? std::optional{value != 0}
                                                                        : std::nullopt;
}

std::optional<bool> animationsOfPortal() {
    const Bus bus = openBus(BusKind::user, limit);
    const BusMessage answer = bus != nullptr ? askPortal(bus.get()) : nullptr;
    return answer != nullptr ? readTruth(answer.get()) : std::nullopt;
}

} // namespace

std::optional<bool> animationsInSettings(std::string_view text) {
    std::optional<bool> animations;
    forEachKey(text, [&](std::string_view group, std::string_view key, std::string_view value) {
        if (group == "Settings" && key == "gtk-enable-animations") {
            if (value == "0" || value == "false") {
                animations = false;
            } else if (value == "1" || value == "true") {
                animations = true;
            }
        }
    });
    return animations;
}

bool prefersReducedMotion(const std::string& configFolder) {
    if (const auto animations = animationsOfPortal()) {
        return !*animations;
    }
    for (const char* file : {"gtk-4.0/settings.ini", "gtk-3.0/settings.ini"}) {
        std::string text;
        if (readFile(joinedPath(configFolder, file), mostBytes, text)) {
            continue;
        }
        if (const auto animations = animationsInSettings(text)) {
            return !*animations;
        }
    }
    return false;
}

} // namespace pacelet::Linux
