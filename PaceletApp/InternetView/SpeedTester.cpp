#include "PaceletApp/InternetView/SpeedTester.h"

#include "Core/Internet/SpeedTest.h"
#include "PaceletApp/InternetView/SavedSpeed.h"
#include "PaceletApp/Scheduler/Detach.h"

#include <utility>

namespace pacelet {

namespace {

std::optional<SpeedResult> testOrNothing(ToolRunner& tools, Clock& clock) {
    try {
        return SpeedTest::run(tools, clock);
    } catch (const SpeedTestError&) {
        return std::nullopt;
    } catch (const LaunchError&) {
        return std::nullopt;
    }
}

} // namespace

SpeedTester::SpeedTester(Platform platform, Scheduler& scheduler, QObject* parent)
    : QObject{parent},
      platform_{std::move(platform)},
      scheduler_{scheduler} {}

void SpeedTester::run() {
    if (!std::exchange(running_, true)) {
        detach(test(this, scheduler_, platform_.tools, platform_.clock, platform_.preferences));
    }
}

QCoro::Task<> SpeedTester::test(QPointer<SpeedTester> tester, Scheduler& scheduler,
                                ToolRunner& tools, Clock& clock, Preferences& preferences) {
    auto testing =
        scheduler.runInBackground([&tools, &clock] { return testOrNothing(tools, clock); });
    const std::optional<SpeedResult> speed = co_await testing;
    if (speed) {
        saveSpeed(preferences, *speed);
    }
    if (tester) {
        tester->running_ = false;
        Q_EMIT tester->ended(speed);
    }
}

} // namespace pacelet
