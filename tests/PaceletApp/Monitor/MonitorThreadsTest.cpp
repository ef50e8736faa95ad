#include "Hosts/Simulated/SimulatedMac.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Scheduler/RealScheduler.h"
#include "tests/PaceletApp/Monitor/MonitorRig.h"

#include <QCoreApplication>

#include <chrono>

namespace pacelet::testing {
namespace {

/// The monitor on the real event loop and pool. Run under the thread sanitizer, this shows that
/// nothing is shared between the threads that is not handed over.
TEST(MonitorThreads, TicksScansAndWritesRunBesideTheUIThread) {
    int count = 1;
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    const QCoreApplication application{count, arguments};
    Simulated::SimulatedMac mac{smallMac()};
    RealScheduler scheduler{mac.machine};
    auto monitor = std::make_unique<Monitor>(mac.platform(), scheduler, smallCatalog());

    constexpr int wanted = 200;
    int ticks = 0;
    int failures = 0;
    QObject::connect(monitor.get(), &Monitor::changed, monitor.get(), [&](const Fields& fields) {
        ticks += fields.hold(monitor->lastChecked) ? 1 : 0;
        failures += fields.hold(monitor->error) ? 1 : 0;
    });
    monitor->setWindowVisible(true);
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds{60};
    for (int round = 0; ticks < wanted && std::chrono::steady_clock::now() < limit; ++round) {
        mac.machine.advance(Seconds{20}); // a minute closes now and then, and a scan falls due
        if (round % 10 == 3) {
            mac.machine.inject(Simulated::ToolFails{"/bin/ps", 1, {}});
        } else if (round % 10 == 4) {
            mac.machine.clearFailures();
        }
        monitor->setMenuOpen(round % 3 == 0);
        monitor->checkNow();
        detach(monitor->refreshBackgroundItems(round % 5 == 0));
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    EXPECT_GE(ticks, wanted);
    EXPECT_GT(failures, 0);
    EXPECT_TRUE(monitor->mac());
    EXPECT_EQ(monitor->backgroundItems().size(), 1U);
    monitor->checkNow();
    monitor.reset(); // with work under way
    EXPECT_TRUE(scheduler.waitForBackground(Seconds{10}));
    EXPECT_FALSE(UsageStore{std::filesystem::path{mac.platform().applicationSupport} / "Pacelet"}
                     .load(fromUnixTime(0))
                     .empty());
}

} // namespace
} // namespace pacelet::testing
