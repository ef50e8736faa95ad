#include "PaceletApp/InternetView/InternetModel.h"

#include "Core/Internet/LinkReader.h"
#include "Core/Internet/NetTop.h"
#include "Core/Internet/TrafficByApp.h"
#include "Core/Platform/Platform.h"
#include "PaceletApp/Components/QuestionModel.h"
#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/InternetView/AppNames.h"
#include "PaceletApp/InternetView/LinkReading.h"
#include "PaceletApp/InternetView/SavedSpeed.h"
#include "PaceletApp/InternetView/SpeedTester.h"
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

template<typename Item, typename Value, typename Make>
void fillList(KeyedListModel<Item>& list, const std::vector<Value>& values, Make make) {
    std::vector<Item> items;
    items.reserve(values.size());
    std::ranges::transform(values, std::back_inserter(items), make);
    list.update(std::move(items));
}

} // namespace

InternetModel::InternetModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      objects_{objects} {
    state_.abilities = objects.platform.abilities;
    state_.speed = savedSpeed(objects.platform.preferences);
    connect(&objects.speedTester, &SpeedTester::ended, this, &InternetModel::testEnded);
    connect(&objects.monitor, &Monitor::changed, this, &InternetModel::follow);
    appName_ = appNames(objects.monitor.groups());
    refresh();
    followWindow();
}

void InternetModel::follow(const Fields& fields) {
    if (fields.hold(objects_.monitor.windowVisible)) {
        followWindow();
    }
    // Once more for the groups that came while nobody looked.
    if (polling_ && fields.hold(objects_.monitor.groups, objects_.monitor.windowVisible)) {
        appName_ = appNames(objects_.monitor.groups());
        refresh();
    }
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
                                  std::stop_token stop) {
    const Platform& platform = objects.platform;
    while (true) {
        LinkReading reading{platform.networkLink};
        const LinkType link = co_await reading;
        // Some drivers take their time.
        auto radio = objects.scheduler.runInBackground(
            [&network = platform.networkLink] { return LinkReader::wifi(network); });
        const std::optional<WiFiLink> wifi = co_await radio;
        if (!model || stop.stop_requested()) {
            co_return;
        }
        model->takeIn(link, wifi);

        auto sampling = objects.scheduler.runInBackground(
            [&tools = platform.tools] { return sampleOrNone(tools); });
        std::vector<NetUsage> usage = co_await sampling;
        if (!model || stop.stop_requested()) {
            co_return;
        }
        model->state_.usage = std::move(usage);
        model->state_.usageLoaded = true;
        model->refresh();

        const bool passed = co_await objects.scheduler.sleep(betweenSamples, stop);
        if (!passed) {
            co_return;
        }
    }
}

void InternetModel::takeIn(LinkType link, std::optional<WiFiLink> wifi) {
    // Most readings are like the one before, and the sample that follows brings all up to date.
    if (state_.link != link || state_.wifi != wifi) {
        state_.link = link;
        state_.wifi = wifi;
        refresh();
    }
}

void InternetModel::askTest() {
    objects_.question.ask(this, testQuestion(state_.isMetered), [this] { runTest(); });
    detach(readMetering(this, objects_));
}

QCoro::Task<> InternetModel::readMetering(QPointer<InternetModel> model, SharedObjects objects) {
    auto reading = objects.scheduler.runInBackground(
        [&network = objects.platform.networkLink] { return network.isExpensive(); });
    const bool isMetered = co_await reading;
    if (model) {
        model->state_.isMetered = isMetered;
        objects.question.setMessage(model, testQuestion(isMetered).message);
    }
}

void InternetModel::runTest() {
    if (state_.testing) {
        return;
    }
    state_.testing = true;
    state_.testError.reset();
    refresh();
    objects_.speedTester.run();
}

void InternetModel::testEnded(const std::optional<SpeedResult>& speed) {
    // One that another screen asked for is in the preferences when this is next shown.
    if (!state_.testing) {
        return;
    }
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
    found_ = pacelet::findings(state_, appName_, now);
    fillList(findingRows_, found_, findingItem);
    linkRows_.update(state_.link == LinkType::wifi && state_.wifi ? readings(*state_.wifi)
                                                                  : std::vector<ReadingItem>{});
    speedRows_.update(state_.speed ? readings(*state_.speed) : std::vector<ReadingItem>{});
    fillList(appRows_, trafficByApp(state_.usage, appName_), trafficItem);
    look_ = internetLook(state_, found_.empty(), now);
}

void InternetModel::fix(int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= found_.size()) {
        return;
    }
    if (const auto& fix = found_[static_cast<std::size_t>(row)].primaryFix()) {
        objects_.actions.press(*fix);
    }
}

} // namespace pacelet
