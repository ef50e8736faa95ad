#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/Systemd/Bus.h"
#include "Hosts/Linux/Systemd/SleepWatcher.h"
#include "Hosts/Linux/Systemd/UnitList.h"
#include "tests/Hosts/Linux/Systemd/PrivateBus.h"
#include "tests/Hosts/Linux/Systemd/ServedBus.h"
#include "tests/Support/Eventually.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace pacelet::Linux {
namespace {

using pacelet::testing::eventually;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::chrono::microseconds limit = std::chrono::seconds{1};
const std::string unitFolder = "/org/freedesktop/systemd1/unit/";

/// The rows that the manager in the test has.
struct Row {
    const char* name;
    const char* load;
    const char* active;
    const char* object;
};
constexpr std::array rows{Row{"web.service", "loaded", "active", "web"},
                          Row{"gone.service", "not-found", "inactive", "gone"},
                          Row{"crash.service", "loaded", "failed", "crash"},
                          Row{"idle.service", "loaded", "inactive", "idle"},
                          Row{"once.service", "loaded", "active", "once"},
                          Row{"vanished.service", "loaded", "active", "vanished"}};

int answerWithRows(sd_bus_message* call, void*, sd_bus_error*) {
    const char* pattern = nullptr;
    sd_bus_message_skip(call, "as");
    sd_bus_message_enter_container(call, 'a', "s");
    sd_bus_message_read(call, "s", &pattern);
    sd_bus_message* reply = nullptr;
    sd_bus_message_new_method_return(call, &reply);
    const BusMessage answer{reply};
    sd_bus_message_open_container(reply, 'a', "(ssssssouso)");
    for (const Row& row : rows) {
        if (std::string_view{pattern} == "*.service") {
            const std::string path = unitFolder + row.object;
            sd_bus_message_append(reply, "(ssssssouso)", row.name, "", row.load, row.active, "", "",
                                  path.c_str(), 0U, "", "/");
        }
    }
    sd_bus_message_close_container(reply);
    return sd_bus_send(nullptr, reply, nullptr);
}

/// "MainPID" 4321 for web and 0 for once; "ExecMainStatus" 139 for crash.
int readProperty(sd_bus*, const char* path, const char*, const char* property,
                 sd_bus_message* reply, void*, sd_bus_error*) {
    const bool isWeb = std::string_view{path}.ends_with("/web");
    return std::string_view{property} == "MainPID"
               ? sd_bus_message_append(reply, "u", isWeb ? 4321U : 0U)
               : sd_bus_message_append(reply, "i", 139);
}

const sd_bus_vtable managerTable[] = {SD_BUS_VTABLE_START(0),
                                      SD_BUS_METHOD("ListUnitsByPatterns", "asas", "a(ssssssouso)",
                                                    answerWithRows, SD_BUS_VTABLE_UNPRIVILEGED),
                                      SD_BUS_VTABLE_END};
const sd_bus_vtable serviceTable[] = {
    SD_BUS_VTABLE_START(0), SD_BUS_PROPERTY("MainPID", "u", readProperty, 0, 0),
    SD_BUS_PROPERTY("ExecMainStatus", "i", readProperty, 0, 0), SD_BUS_VTABLE_END};

/// The end of a pipe that shows whether somebody holds what `Inhibit` gave.
std::atomic<int> delayProbe{-1};

int inhibit(sd_bus_message* call, void*, sd_bus_error*) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return -errno;
    }
    delayProbe = ends[0];
    const Descriptor given{ends[1]};
    return sd_bus_reply_method_return(call, "h", given.get());
}

/// Whether the machine would wait with its sleep.
bool isDelayed() {
    pollfd probe{delayProbe, POLLIN, 0};
    return delayProbe >= 0 && ::poll(&probe, 1, 0) == 0;
}

const sd_bus_vtable loginTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Inhibit", "ssss", "h", inhibit, SD_BUS_VTABLE_UNPRIVILEGED), SD_BUS_VTABLE_END};

/// A connection on which the service manager and the login manager of a machine stand.
Bus managers() {
    Bus bus = openBus(BusKind::system, limit);
    sd_bus_add_object_vtable(bus.get(), nullptr, "/org/freedesktop/systemd1",
                             "org.freedesktop.systemd1.Manager", managerTable, nullptr);
    for (const char* name : {"web", "once", "crash"}) {
        sd_bus_add_object_vtable(bus.get(), nullptr, (unitFolder + name).c_str(),
                                 "org.freedesktop.systemd1.Service", serviceTable, nullptr);
    }
    sd_bus_add_object_vtable(bus.get(), nullptr, "/org/freedesktop/login1",
                             "org.freedesktop.login1.Manager", loginTable, nullptr);
    sd_bus_request_name(bus.get(), "org.freedesktop.systemd1", 0);
    sd_bus_request_name(bus.get(), "org.freedesktop.login1", 0);
    return bus;
}

/// The same, served.
class Managers {
public:
    /// Says that the machine goes to sleep, or woke, until told otherwise.
    void say(int isGoing) { word_ = isGoing; }

private:
    void sayIt(sd_bus* bus) {
        if (const int word = word_.exchange(-1); word >= 0) {
            sd_bus_emit_signal(bus, "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                               "PrepareForSleep", "b", word);
        }
    }

    std::atomic<int> word_{-1};
    pacelet::testing::ServedBus served_{managers(), [this](sd_bus* bus) { sayIt(bus); }};
};

TEST(ServiceManager, TellsLoadedServicesAndTheirProcesses) {
    pacelet::testing::PrivateBus daemon;
    if (!daemon.runs()) {
        GTEST_SKIP() << "no bus daemon is installed";
    }
    const Bus bus = openBus(BusKind::user, limit);
    ASSERT_NE(bus, nullptr);
    EXPECT_EQ(listUnits(bus.get()), std::nullopt) << "the bus has no service manager";
    const Managers manager;
    const auto units = listUnits(bus.get());
    ASSERT_TRUE(units);
    EXPECT_THAT(*units,
                ElementsAre(Unit{"web.service", 4321}, Unit{"crash.service", {}, 139},
                            Unit{"idle.service"}, Unit{"once.service"}, Unit{"vanished.service"}));
}

TEST(Bus, IsNotWaitedForLongerThanTheLimit) {
    const pacelet::testing::TemporaryFolder folder;
    sockaddr_un address{AF_UNIX, {}};
    (folder.path() / "bus").string().copy(address.sun_path, sizeof address.sun_path - 1);
    const std::string name = std::string{"unix:path="} + address.sun_path;
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", name.c_str(), 1);
    EXPECT_EQ(openBus(BusKind::system, limit), nullptr) << "nobody is there";
    const Descriptor silent{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    ASSERT_EQ(::bind(silent.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(silent.get(), 4), 0);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(openBus(BusKind::system, limit / 10), nullptr);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{5});
    ::unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}

/// A UI thread that does what was posted when the test says so.
class PostedWork {
public:
    PostToUI poster() {
        return [this](std::function<void()> work) {
            const std::lock_guard lock{mutex_};
            posted_.push_back(std::move(work));
        };
    }
    std::size_t size() {
        const std::lock_guard lock{mutex_};
        return posted_.size();
    }
    void run() {
        std::vector<std::function<void()>> due;
        {
            const std::lock_guard lock{mutex_};
            due.swap(posted_);
        }
        for (const auto& work : due) {
            work();
        }
    }

private:
    std::mutex mutex_;
    std::vector<std::function<void()>> posted_;
};

TEST(SleepWatcher, TellsSleepAndWakeOnTheUIThread) {
    pacelet::testing::PrivateBus daemon;
    if (!daemon.runs()) {
        GTEST_SKIP() << "no bus daemon is installed";
    }
    Managers manager;
    PostedWork ui;
    std::vector<std::string> seen;
    auto watcher = std::make_unique<SleepWatcher>(
        ui.poster(), [&] { seen.emplace_back("sleep"); }, [&] { seen.emplace_back("wake"); });
    ASSERT_TRUE(eventually([&] { return isDelayed(); }));
    manager.say(1);
    ASSERT_TRUE(eventually([&] { return ui.size() > 0; }));
    EXPECT_THAT(seen, IsEmpty()) << "not on the watcher's own thread";
    EXPECT_TRUE(isDelayed()) << "the machine waits until all have stopped";
    ui.run();
    EXPECT_THAT(seen, ElementsAre("sleep"));
    EXPECT_TRUE(eventually([&] { return !isDelayed(); }));
    seen.clear();
    ASSERT_TRUE(eventually([&] {
        manager.say(0);
        ui.run();
        return !seen.empty() && seen.back() == "wake";
    }));
    EXPECT_TRUE(eventually([&] { return isDelayed(); })) << "for the next time";
    manager.say(0);
    ASSERT_TRUE(eventually([&] { return ui.size() > 0; }));
    watcher.reset();
    seen.clear();
    ui.run();
    EXPECT_THAT(seen, IsEmpty()) << "what was under way when it was dropped is dropped too";
}

TEST(SleepWatcher, KeepsStillWithoutABus) {
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/no/such/bus", 1);
    PostedWork ui;
    {
        const SleepWatcher watcher{ui.poster(), [] {}, [] {}};
    }
    {
        const SleepWatcher watcher{nullptr, [] {}, [] {}};
    }
    EXPECT_EQ(ui.size(), 0u);
    ::unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}

} // namespace
} // namespace pacelet::Linux
