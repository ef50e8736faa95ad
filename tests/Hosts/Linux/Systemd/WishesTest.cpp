#include "Hosts/Linux/Desktop/Wishes.h"
#include "tests/Hosts/Linux/Systemd/PrivateBus.h"
#include "tests/Hosts/Linux/Systemd/ServedBus.h"

#include <gtest/gtest.h>
#include <string_view>

namespace pacelet::Linux {
namespace {

TEST(Wishes, TheToolkitsSettingsTell) {
    const struct {
        std::string_view text;
        std::optional<bool> animations;
    } cases[] = {
        {"", {}},
        {"[Settings]\ngtk-enable-animations=0\n", false},
        {"# all\n[Settings]\n gtk-theme-name=x\n gtk-enable-animations = false\r\n", false},
        {"[Settings]\ngtk-enable-animations=1\n", true},
        {"[Settings]\ngtk-enable-animations=true\ngtk-enable-animations=0\n", false},
        {"[Settings]\ngtk-enable-animations=maybe\n", {}},
        {"[Other]\ngtk-enable-animations=0\n", {}},
        {"gtk-enable-animations=0\n", {}}};
    for (const auto& row : cases) {
        EXPECT_EQ(animationsInSettings(row.text), row.animations) << row.text;
    }
}

/// What the portal of a test says, as its user data: the text of a type and a value.
struct Word {
    const char* type;
    int value;
};

int answerRead(sd_bus_message* call, void* data, sd_bus_error* error) {
    const char* group = nullptr;
    const char* key = nullptr;
    sd_bus_message_read(call, "ss", &group, &key);
    const Word& word = *static_cast<const Word*>(data);
    if (std::string_view{group} != "org.gnome.desktop.interface" ||
        std::string_view{key} != "enable-animations" || word.type == nullptr) {
        return sd_bus_error_set(error, "org.freedesktop.portal.Error.NotFound", "no such setting");
    }
    return std::string_view{word.type} == "s"
               ? sd_bus_reply_method_return(call, "v", "s", "no truth")
               : sd_bus_reply_method_return(call, "v", "v", word.type, word.value);
}

const sd_bus_vtable portalTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Read", "ss", "v", answerRead, SD_BUS_VTABLE_UNPRIVILEGED), SD_BUS_VTABLE_END};

Bus portal(Word& word) {
    Bus bus = openBus(BusKind::user, std::chrono::seconds{1});
    sd_bus_add_object_vtable(bus.get(), nullptr, "/org/freedesktop/portal/desktop",
                             "org.freedesktop.portal.Settings", portalTable, &word);
    sd_bus_request_name(bus.get(), "org.freedesktop.portal.Desktop", 0);
    return bus;
}

TEST(Wishes, ThePortalCountsBeforeTheSettings) {
    const pacelet::testing::TemporaryFolder folder;
    const std::string config = folder.path().string();
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus", 1);
    EXPECT_FALSE(wishesOfDesktop(config).reducedMotion) << "nobody says anything";
    folder.write("gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=0\n");
    EXPECT_TRUE(wishesOfDesktop(config).reducedMotion);
    folder.write("gtk-4.0/settings.ini", "[Settings]\ngtk-enable-animations=1\n");
    EXPECT_FALSE(wishesOfDesktop(config).reducedMotion);
    folder.write("gtk-4.0/settings.ini", "[Settings]\ngtk-theme-name=x\n");
    EXPECT_TRUE(wishesOfDesktop(config).reducedMotion) << "the newer file says nothing of it";

    pacelet::testing::PrivateBus daemon;
    if (!daemon.runs()) {
        GTEST_SKIP() << "no bus daemon is installed";
    }
    EXPECT_TRUE(wishesOfDesktop(config).reducedMotion) << "a bus without a portal";
    for (const auto& [word, reduced] : {std::pair{Word{"b", 1}, false},
                                        {Word{"b", 0}, true},
                                        {Word{nullptr, 0}, true},
                                        {Word{"s", 0}, true},
                                        {Word{"u", 1}, true}}) {
        Word said = word;
        const pacelet::testing::ServedBus served{portal(said)};
        EXPECT_EQ(wishesOfDesktop(config).reducedMotion, reduced)
            << (word.type != nullptr ? word.type : "nothing") << ' ' << word.value;
    }
}

/// Both switches of a desktop for contrast, each 0, 1 or unknown to it.
struct Contrast {
    int common;
    int gnome;
    bool wanted;
};

int answerContrast(sd_bus_message* call, void* data, sd_bus_error* error) {
    const char* group = nullptr;
    const char* key = nullptr;
    sd_bus_message_read(call, "ss", &group, &key);
    const Contrast& said = *static_cast<const Contrast*>(data);
    const bool isCommon = std::string_view{group} == "org.freedesktop.appearance" &&
                          std::string_view{key} == "contrast";
    const bool isGnome = std::string_view{group} == "org.gnome.desktop.a11y.interface" &&
                         std::string_view{key} == "high-contrast";
    const int value = isCommon ? said.common : isGnome ? said.gnome : -1;
    return value < 0
               ? sd_bus_error_set(error, "org.freedesktop.portal.Error.NotFound", "no such setting")
               : sd_bus_reply_method_return(call, "v", "v", isCommon ? "u" : "b", value);
}

const sd_bus_vtable contrastTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Read", "ss", "v", answerContrast, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END};

TEST(Wishes, ContrastIsTheDesktopsOrItsThemes) {
    const pacelet::testing::TemporaryFolder folder;
    const std::string config = folder.path().string();
    folder.write("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=HighContrastInverse\n");
    pacelet::testing::PrivateBus daemon;
    if (!daemon.runs()) {
        GTEST_SKIP() << "no bus daemon is installed";
    }
    EXPECT_TRUE(wishesOfDesktop(config).highContrast) << "a bus without a portal";
    for (Contrast said : {Contrast{0, 0, false},
                          {1, 0, true},
                          {0, 1, true},
                          {-1, 0, false},
                          {0, -1, false},
                          {2, 0, false},
                          {-1, -1, true}}) {
        Bus bus = openBus(BusKind::user, std::chrono::seconds{1});
        sd_bus_add_object_vtable(bus.get(), nullptr, "/org/freedesktop/portal/desktop",
                                 "org.freedesktop.portal.Settings", contrastTable, &said);
        sd_bus_request_name(bus.get(), "org.freedesktop.portal.Desktop", 0);
        const pacelet::testing::ServedBus served{std::move(bus)};
        EXPECT_EQ(wishesOfDesktop(config).highContrast, said.wanted)
            << said.common << ' ' << said.gnome;
    }
    folder.write("gtk-4.0/settings.ini", "[Settings]\ngtk-theme-name=Adwaita\n");
    EXPECT_FALSE(wishesOfDesktop(config).highContrast) << "the newer file counts";
}

} // namespace
} // namespace pacelet::Linux
