#include "tests/Hosts/Linux/Systemd/PrivateBus.h"
#include "tests/Hosts/Linux/Systemd/ServedBus.h"
#include "tests/programs/support/DesktopSession.h"

#include <gtest/gtest.h>
#include <mutex>

namespace pacelet::testing {
namespace {

using Linux::Bus;
using Linux::BusKind;
using Linux::BusMessage;

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
constexpr std::chrono::seconds limit{5};

/// The tray of a desktop that has it on the bus: who has registered there.
struct BusTray {
    std::mutex mutex;
    std::string item;

    std::string registered() {
        const std::lock_guard lock{mutex};
        return item;
    }
};

int registerItem(sd_bus_message* call, void* data, sd_bus_error*) {
    const char* name = nullptr;
    sd_bus_message_read(call, "s", &name);
    BusTray& tray = *static_cast<BusTray*>(data);
    {
        const std::lock_guard lock{tray.mutex};
        tray.item = name;
    }
    return sd_bus_reply_method_return(call, "");
}

int sayYes(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
           sd_bus_error*) {
    return sd_bus_message_append(reply, "b", 1);
}

const sd_bus_vtable watcherTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", registerItem, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_PROPERTY("IsStatusNotifierHostRegistered", "b", sayYes, 0, 0), SD_BUS_VTABLE_END};

Bus watcher(BusTray& tray) {
    Bus bus = Linux::openBus(BusKind::user, limit);
    sd_bus_add_object_vtable(bus.get(), nullptr, "/StatusNotifierWatcher", watcherName,
                             watcherTable, &tray);
    sd_bus_request_name(bus.get(), watcherName, 0);
    return bus;
}

/// The colour (0xAARRGGBB) in the middle of the first picture of an item; 0 without one.
std::uint32_t iconColour(sd_bus* bus, const std::string& item) {
    sd_bus_message* reply = nullptr;
    if (sd_bus_get_property(bus, item.c_str(), itemPath, itemInterface, "IconPixmap", nullptr,
                            &reply, "a(iiay)") < 0) {
        return 0;
    }
    const BusMessage pictures{reply};
    int width = 0;
    int height = 0;
    const void* bytes = nullptr;
    std::size_t size = 0;
    sd_bus_message_enter_container(reply, 'a', "(iiay)");
    sd_bus_message_enter_container(reply, 'r', "iiay");
    sd_bus_message_read(reply, "ii", &width, &height);
    sd_bus_message_read_array(reply, 'y', &bytes, &size);
    const std::size_t middle = 4 * (static_cast<std::size_t>(height / 2 * width + width / 2));
    if (middle + 4 > size) {
        return 0;
    }
    std::uint32_t colour = 0;
    for (std::size_t at = middle; at < middle + 4; ++at) {
        colour = colour << 8 | static_cast<const std::uint8_t*>(bytes)[at];
    }
    return colour;
}

TEST(BusTray, ShowsTheDotAndOpensThePanelAtThePointer) {
    PrivateBus daemon;
    const DesktopSession desktop;
    if (!daemon.runs() || !desktop.isUp()) {
        GTEST_SKIP() << "no desktop to start";
    }
    BusTray tray;
    const ServedBus served{watcher(tray)};
    ChildProgram demo = desktop.start("pacelet-demo", {"out-of-memory"},
                                      {{"DBUS_SESSION_BUS_ADDRESS", daemon.address()}});
    ASSERT_TRUE(eventually([&] { return !tray.registered().empty(); }));
    const std::string item = tray.registered();
    const Bus bus = Linux::openBus(BusKind::user, limit);
    ASSERT_NE(bus, nullptr);
    EXPECT_TRUE(eventually([&] { return iconColour(bus.get(), item) == 0xFFF87171; }));

    ASSERT_TRUE(eventually([&] { return desktop.windows().size() == 1; }));
    desktop.point(DesktopSession::width - 40, DesktopSession::height - 10);
    ASSERT_GE(sd_bus_call_method(bus.get(), item.c_str(), itemPath, itemInterface, "Activate",
                                 nullptr, nullptr, "ii", 0, 0),
              0);
    ASSERT_TRUE(eventually([&] { return desktop.windows().size() == 2; }));
    const Area panel = desktop.windows().back().area;
    EXPECT_EQ(panel.width, 300);
    EXPECT_LE(panel.right(), DesktopSession::width);
    EXPECT_GT(panel.right(), DesktopSession::width - 60);
    EXPECT_LE(panel.bottom(), DesktopSession::tray().y);
    EXPECT_GT(panel.bottom(), DesktopSession::tray().y - 20);
    EXPECT_TRUE(eventually([&] { return desktop.activeWindow() == desktop.windows().back().id; }));
    EXPECT_TRUE(demo.runs());
}

} // namespace
} // namespace pacelet::testing
