#include "PaceletApp/InternetView/InternetModel.h"

#include "Core/Internet/LinkReader.h"
#include "Core/Internet/NetTop.h"
#include "Core/Internet/SpeedTest.h"
#include "Core/Internet/TrafficByApp.h"
#include "Core/Platform/Platform.h"
#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/InternetView/AppNames.h"
#include "PaceletApp/InternetView/LinkReading.h"
#include "PaceletApp/InternetView/SavedSpeed.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Scheduler/Detach.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pacelet {

namespace {

constexpr Seconds betweenSamples{1};

std::vector<NetUsage> sampleOrNone(ToolRunner& tools) {
    try {
        return NetTop::sample(tools);
    } catch (const LaunchError&) {
        return {};
    }
}

std::optional<SpeedResult> testOrNothing(ToolRunner& tools, Clock& clock) {
    try {
        return SpeedTest::run(tools, clock);
    } catch (const SpeedTestError&) {
        return std::nullopt;
    } catch (const LaunchError&) {
        return std::nullopt;
    }
}

template<typename Item, typename Value, typename Make>
void fill(KeyedListModel<Item>& list, const std::vector<Value>& values, Make make) {
    std::vector<Item> items;
    items.reserve(values.size());
    std::ranges::transform(values, std::back_inserter(items), make);
    list.update(std::move(items));
}

} // namespace

InternetModel::InternetModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects}, findingRows_{[](const FindingItem& item) {
                                                           return item.id;
                                                       },
                                                       findingRoles()},
      linkRows_{[](const ReadingItem& item) { return item.label.toStdString(); }, readingRoles()},
      speedRows_{[](const ReadingItem& item) { return item.label.toStdString(); }, readingRoles()},
      appRows_{[](const TrafficItem& item) { return item.name.toStdString(); }, trafficRoles()} {
    state_.speed = savedSpeed(objects.platform.preferences);
    connect(&objects.monitor, &Monitor::windowVisibleChanged, this, &InternetModel::followWindow);
    connect(&objects.monitor, &Monitor::groupsChanged, this, [this] {
        if (polling_) {
            refresh();
        }
    });
    refresh();
    followWindow();
}

void InternetModel::followWindow() {
    const bool visible = objects_.monitor.windowVisible();
    if (visible == polling_.has_value()) {
        return;
    }
    polling_.reset();
    if (visible) {
        polling_.emplace();
        detach(poll(this, objects_, polling_->token()));
    }
}

QCoro::Task<> InternetModel::poll(QPointer<InternetModel> model, SharedObjects objects,
                                  CancellationToken token) {
    const Platform& platform = objects.platform;
    while (true) {
        LinkReading reading{platform.networkLink};
        const LinkType link = co_await reading;
        if (!model || token.isCancelled()) {
            co_return;
        }
        model->state_.link = link;
        model->state_.wifi = LinkReader::wifi(platform.networkLink);
        model->refresh();

        auto sampling = objects.scheduler.runInBackground(
            [&tools = platform.tools] { return sampleOrNone(tools); });
        std::vector<NetUsage> usage = co_await sampling;
        if (!model || token.isCancelled()) {
            co_return;
        }
        model->state_.usage = std::move(usage);
        model->state_.usageLoaded = true;
        model->refresh();

        const bool passed = co_await objects.scheduler.sleep(betweenSamples, token);
        if (!passed) {
            co_return;
        }
    }
}

void InternetModel::setAskTest(bool ask) {
    if (std::exchange(askTest_, ask) != ask) {
        Q_EMIT askTestChanged();
    }
}

void InternetModel::runTest() {
    if (state_.testing) {
        return;
    }
    state_.testing = true;
    state_.testError.reset();
    refresh();
    const Platform& platform = objects_.platform;
    detach(test(this, objects_.scheduler, platform.tools, platform.clock, platform.preferences));
}

QCoro::Task<> InternetModel::test(QPointer<InternetModel> model, Scheduler& scheduler,
                                  ToolRunner& tools, Clock& clock, Preferences& preferences) {
    auto testing =
        scheduler.runInBackground([&tools, &clock] { return testOrNothing(tools, clock); });
    const std::optional<SpeedResult> speed = co_await testing;
    if (speed) {
        saveSpeed(preferences, *speed);
    }
    if (model) {
        model->testEnded(speed);
    }
}

void InternetModel::testEnded(const std::optional<SpeedResult>& speed) {
    if (speed) {
        state_.speed = speed;
    } else {
        state_.testError = "The speed test didn't finish. Check your connection and try again.";
    }
    state_.testing = false;
    refresh();
}

void InternetModel::refresh() {
    const TimePoint now = objects_.scheduler.now();
    const AppName appName = appNames(objects_.monitor.groups());
    found_ = pacelet::findings(state_, appName, now);
    fill(findingRows_, found_, findingItem);
    linkRows_.update(state_.link == LinkType::wifi && state_.wifi ? readings(*state_.wifi)
                                                                  : std::vector<ReadingItem>{});
    speedRows_.update(state_.speed ? readings(*state_.speed) : std::vector<ReadingItem>{});
    fill(appRows_, trafficByApp(state_.usage, appName), trafficItem);
    InternetLook look = internetLook(state_, found_.empty(), now);
    if (look != look_) {
        look_ = std::move(look);
        Q_EMIT lookChanged();
    }
}

void InternetModel::fix(int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= found_.size()) {
        return;
    }
    if (const auto& fix = found_[static_cast<std::size_t>(row)].primaryFix()) {
        objects_.actions.perform(*fix, nullptr);
    }
}

} // namespace pacelet
