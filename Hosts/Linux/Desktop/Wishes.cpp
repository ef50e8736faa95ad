#include "Hosts/Linux/Desktop/Wishes.h"

#include "Core/Support/Files.h"
#include "Hosts/Linux/Desktop/KeyFile.h"
#include "Hosts/Linux/Systemd/Bus.h"

#include <cstdint>

namespace pacelet::Linux {

namespace {

constexpr std::chrono::microseconds limit = std::chrono::milliseconds{500};
constexpr std::size_t mostBytes = 1 << 16;

BusMessage askPortal(sd_bus* bus, const char* group, const char* key) {
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
    if (sd_bus_message_append(request, "ss", group, key) < 0 ||
        sd_bus_call(bus, request, 0, nullptr, &reply) < 0) {
        return nullptr;
    }
    return BusMessage{reply};
}

/// The truth value or the number in a message, within as many variants as the sender likes.
std::optional<std::uint32_t> readValue(sd_bus_message* message, char wanted) {
    char type = 0;
    const char* contents = nullptr;
    while (sd_bus_message_peek_type(message, &type, &contents) > 0 && type == 'v') {
        if (sd_bus_message_enter_container(message, type, contents) < 0) {
            return std::nullopt;
        }
    }
    std::uint32_t value = 0;
    return type == wanted && sd_bus_message_read_basic(message, type, &value) > 0
               ? std::optional{value}
               : std::nullopt;
}

std::optional<bool> portalSays(sd_bus* bus, const char* group, const char* key, char type) {
    const BusMessage answer = bus != nullptr ? askPortal(bus, group, key) : nullptr;
    const auto value = answer != nullptr ? readValue(answer.get(), type) : std::nullopt;
    return value ? std::optional{*value == 1} : std::nullopt;
}

/// All desktops' own word of it is young; GNOME's switch came before it.
std::optional<bool> contrastOfPortal(sd_bus* bus) {
    const auto common = portalSays(bus, "org.freedesktop.appearance", "contrast", 'u');
    const auto gnome = portalSays(bus, "org.gnome.desktop.a11y.interface", "high-contrast", 'b');
    return common && gnome ? std::optional{*common || *gnome} : common ? common : gnome;
}

/// What the newest of the toolkit's settings says that says something.
std::optional<bool> settingsSay(const std::string& configFolder,
                                std::optional<bool> (*read)(std::string_view)) {
    for (const char* file : {"gtk-4.0/settings.ini", "gtk-3.0/settings.ini"}) {
        std::string text;
        if (readFile(joinedPath(configFolder, file), mostBytes, text)) {
            continue;
        }
        if (const auto said = read(text)) {
            return said;
        }
    }
    return std::nullopt;
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

std::optional<bool> contrastInSettings(std::string_view text) {
    std::optional<bool> contrast;
    forEachKey(text, [&](std::string_view group, std::string_view key, std::string_view value) {
        if (group == "Settings" && key == "gtk-theme-name") {
            contrast = value.starts_with("HighContrast");
        }
    });
    return contrast;
}

DesktopWishes wishesOfDesktop(const std::string& configFolder) {
    const Bus bus = openBus(BusKind::user, limit);
    auto animations =
        portalSays(bus.get(), "org.gnome.desktop.interface", "enable-animations", 'b');
    auto contrast = contrastOfPortal(bus.get());
    if (!animations) {
        animations = settingsSay(configFolder, animationsInSettings);
    }
    if (!contrast) {
        contrast = settingsSay(configFolder, contrastInSettings);
    }
    return {.reducedMotion = !animations.value_or(true), .highContrast = contrast.value_or(false)};
}

} // namespace pacelet::Linux
