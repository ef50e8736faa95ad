#include "Hosts/Recorded/TapedDesktop.h"

#include <utility>

namespace pacelet::Recorded {

namespace {

/// One application of a list; null behind it while it is replayed, and then it goes on for ever.
class AppHandle : public RunningApplication {
public:
    AppHandle(AppAnswer facts, std::shared_ptr<RunningApplication> live)
        : facts_{std::move(facts)},
          live_{std::move(live)} {}

    std::optional<std::string> bundlePath() const override { return facts_.bundlePath; }
    std::optional<std::string> bundleIdentifier() const override { return facts_.bundleIdentifier; }
    std::optional<std::string> executablePath() const override { return facts_.executablePath; }
    ActivationPolicy activationPolicy() const override { return facts_.policy; }
    bool isTerminated() const override { return live_ && live_->isTerminated(); }
    bool terminate() override { return live_ && live_->terminate(); }
    bool forceTerminate() override { return live_ && live_->forceTerminate(); }

private:
    AppAnswer facts_;
    std::shared_ptr<RunningApplication> live_;
};

class WiFiReading : public WiFiInterface {
public:
    explicit WiFiReading(const WiFiAnswer& facts)
        : facts_{facts} {}

    std::int64_t rssiValue() override { return facts_.rssi; }
    std::int64_t noiseMeasurement() override { return facts_.noise; }
    double transmitRate() override { return facts_.rate; }
    std::optional<int> channelBand() override { return facts_.band; }

private:
    WiFiAnswer facts_;
};

const std::string pathCall = "networkPath";

/// Keeps what the live monitor says.
class RecordingMonitor : public PathMonitor {
public:
    RecordingMonitor(Tape& tape, std::shared_ptr<PathMonitor> live)
        : tape_{tape},
          live_{std::move(live)} {}

    void start(const std::string& queueLabel, std::function<void(NetworkPath)> update) override {
        live_->start(queueLabel, [&tape = tape_, update = std::move(update)](NetworkPath path) {
            update(tape.answer<NetworkPath>(pathCall, {}, [path] { return path; }));
        });
    }
    void cancel() override { live_->cancel(); }

private:
    Tape& tape_;
    std::shared_ptr<PathMonitor> live_;
};

class ReplayedMonitor : public PathMonitor {
public:
    explicit ReplayedMonitor(Tape& tape)
        : tape_{tape} {}

    void start(const std::string&, std::function<void(NetworkPath)> update) override {
        update(tape_.answer<NetworkPath>(pathCall, {}, nullptr));
    }
    void cancel() override {}

private:
    Tape& tape_;
};

} // namespace

std::vector<std::shared_ptr<RunningApplication>> TapedWorkspace::runningApplications() {
    std::vector<std::shared_ptr<RunningApplication>> apps;
    const auto live = [&] {
        std::vector<AppAnswer> answers;
        apps = live_->runningApplications();
        for (const auto& app : apps) {
            answers.push_back({app->bundlePath(), app->bundleIdentifier(), app->executablePath(),
                               app->activationPolicy()});
        }
        return answers;
    };
    auto answers = tape_.answer<std::vector<AppAnswer>>("runningApplications", {}, live);
    std::vector<std::shared_ptr<RunningApplication>> handles;
    for (std::size_t place = 0; place < answers.size(); ++place) {
        handles.push_back(std::make_shared<AppHandle>(std::move(answers[place]),
                                                      place < apps.size() ? apps[place] : nullptr));
    }
    return handles;
}

bool TapedWorkspace::isRunning(const std::string& bundleIdentifier) {
    return tape_.answer<bool>("isRunning " + bundleIdentifier, false,
                              [&] { return live_->isRunning(bundleIdentifier); });
}

bool TapedWorkspace::openURL(const std::string& url) {
    return live_ != nullptr && live_->openURL(url);
}

std::optional<std::string> TapedWorkspace::applicationPath(const std::string& bundleIdentifier) {
    return tape_.answer<std::optional<std::string>>("applicationPath " + bundleIdentifier, {}, [&] {
        return live_->applicationPath(bundleIdentifier);
    });
}

void TapedWorkspace::openApplication(const std::string& path) {
    if (live_ != nullptr) {
        live_->openApplication(disguise_->reveal(path));
    }
}

std::optional<EncodedImage> TapedWorkspace::icon(const std::string& path, int size) {
    return live_ != nullptr ? live_->icon(disguise_->reveal(path), size) : std::nullopt;
}

ObserverHandle TapedWorkspace::observeSleep(std::function<void()> willSleep,
                                            std::function<void()> didWake) {
    return live_ != nullptr ? live_->observeSleep(std::move(willSleep), std::move(didWake))
                            : nullptr;
}

std::unique_ptr<WiFiInterface> TapedNetwork::wifiInterface() {
    const auto live = [this]() -> std::optional<WiFiAnswer> {
        const auto interface = live_->wifiInterface();
        return interface ? std::optional{WiFiAnswer{
                               interface->rssiValue(), interface->noiseMeasurement(),
                               interface->transmitRate(), interface->channelBand()}}
                         : std::nullopt;
    };
    const auto facts = tape_.answer<std::optional<WiFiAnswer>>("wifiInterface", {}, live);
    return facts ? std::make_unique<WiFiReading>(*facts) : nullptr;
}

std::shared_ptr<PathMonitor> TapedNetwork::makePathMonitor() {
    if (live_ == nullptr) {
        return std::make_shared<ReplayedMonitor>(tape_);
    }
    return std::make_shared<RecordingMonitor>(tape_, live_->makePathMonitor());
}

bool TapedNetwork::isExpensive() {
    return tape_.answer<bool>("isExpensive", false, [this] { return live_->isExpensive(); });
}

std::optional<std::vector<WindowDictionary>> TapedWindows::windowInfo() {
    using Windows = std::optional<std::vector<WindowDictionary>>;
    return tape_.answer<Windows>("windowInfo", {}, [this] {
        Windows windows = live_->windowInfo();
        if (windows) {
            for (WindowDictionary& window : *windows) {
                window.erase("kCGWindowName");
            }
        }
        return windows;
    });
}

std::optional<std::vector<std::uint32_t>> TapedWindows::activeDisplays(std::size_t maximum) {
    return tape_.answer<std::optional<std::vector<std::uint32_t>>>(
        "activeDisplays", {}, [=, this] { return live_->activeDisplays(maximum); });
}

std::optional<std::int64_t> TapedWindows::currentModeWidth(std::uint32_t display) {
    return tape_.answer<std::optional<std::int64_t>>(
        fmt::format("currentModeWidth {}", display), {},
        [=, this] { return live_->currentModeWidth(display); });
}

std::optional<std::vector<std::int64_t>> TapedWindows::modeWidths(std::uint32_t display) {
    return tape_.answer<std::optional<std::vector<std::int64_t>>>(
        fmt::format("modeWidths {}", display), {},
        [=, this] { return live_->modeWidths(display); });
}

std::vector<std::shared_ptr<const ProgramFacts>>
TapedKnowledge::about(std::span<const ProgramQuestion> questions) {
    std::vector<std::shared_ptr<const ProgramFacts>> live;
    if (live_ != nullptr) {
        // All at once, as the machine likes it.
        std::vector<ProgramQuestion> known{questions.begin(), questions.end()};
        for (ProgramQuestion& question : known) {
            question.path = disguise_->reveal(question.path);
        }
        live = live_->about(known);
    }
    std::vector<std::shared_ptr<const ProgramFacts>> answers;
    for (std::size_t place = 0; place < questions.size(); ++place) {
        using Facts = std::optional<ProgramFacts>;
        const auto facts = tape_.answer<Facts>(
            fmt::format("about {} {}", questions[place].pid, questions[place].path), {},
            [&] { return live[place] ? Facts{*live[place]} : std::nullopt; });
        answers.push_back(facts ? shared(*facts) : nullptr);
    }
    return answers;
}

std::shared_ptr<const ProgramFacts> TapedKnowledge::shared(const ProgramFacts& facts) {
    const std::lock_guard lock{mutex_};
    auto& place = shared_[Wire::encode(facts)];
    if (!place) {
        place = std::make_shared<const ProgramFacts>(facts);
    }
    return place;
}

std::vector<BackgroundItem> TapedItems::items() {
    return tape_.answer<std::vector<BackgroundItem>>("backgroundItems", {},
                                                     [this] { return live_->items(); });
}

} // namespace pacelet::Recorded
