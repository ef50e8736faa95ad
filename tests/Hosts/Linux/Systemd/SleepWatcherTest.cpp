#include "Hosts/Linux/Systemd/SleepWatcher.h"
#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/Systemd/Bus.h"
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

/// A connection on which the login manager of a machine stands.
Bus loginManager() {
    Bus bus = openBus(BusKind::system, limit);
    sd_bus_add_object_vtable(bus.get(), nullptr, "/org/freedesktop/login1",
                             "org.freedesktop.login1.Manager", loginTable, nullptr);
    sd_bus_request_name(bus.get(), "org.freedesktop.login1", 0);
    return bus;
}

/// The same, served.
class LoginManager {
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
    pacelet::testing::ServedBus served_{loginManager(), [this](sd_bus* bus) { sayIt(bus); }};
};

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
    LoginManager manager;
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
