#include "Hosts/Simulated/Services/MacWorkspace.h"

#include "Core/Support/Text.h"
#include "Hosts/Simulated/Services/AppIcon.h"

#include <algorithm>
#include <utility>

namespace pacelet::Simulated {

namespace {

class AppHandle : public RunningApplication {
public:
    AppHandle(Machine& machine, const RunningApp& app)
        : machine_{machine},
          number_{app.number},
          bundle_{app.bundle} {}

    std::optional<std::string> bundlePath() const override { return bundle_.path; }
    std::optional<std::string> bundleIdentifier() const override {
        return bundle_.bundleIdentifier;
    }
    std::optional<std::string> executablePath() const override { return bundle_.executable(); }
    ActivationPolicy activationPolicy() const override { return bundle_.policy; }
    bool isTerminated() const override { return findRunning(*machine_.lock(), number_) == nullptr; }
    bool terminate() override { return requestQuit(*machine_.lock(), number_); }
    bool forceTerminate() override { return forceQuit(*machine_.lock(), number_); }

private:
    Machine& machine_;
    int number_;
    InstalledApp bundle_;
};

/// The URL schemes that something on the Mac opens.
bool hasHandler(std::string_view url) {
    constexpr std::array<std::string_view, 4> schemes{
        "https:", "http:", "x-apple.systempreferences:", "mailto:"};
    return std::any_of(schemes.begin(), schemes.end(),
                       [url](std::string_view scheme) { return url.starts_with(scheme); });
}

/// The application's own path, whether it is named as the Mac knows it or as a file of the tree.
const InstalledApp* findByPath(const World& world, std::string_view path) {
    const auto found =
        std::find_if(world.installed.begin(), world.installed.end(),
                     [path](const InstalledApp& app) { return path.ends_with(app.path); });
    return found != world.installed.end() ? &*found : nullptr;
}

} // namespace

std::vector<std::shared_ptr<RunningApplication>> MacWorkspace::runningApplications() {
    const auto world = machine_.lock();
    std::vector<std::shared_ptr<RunningApplication>> handles;
    handles.reserve(world->running.size());
    for (const RunningApp& app : world->running) {
        handles.push_back(std::make_shared<AppHandle>(machine_, app));
    }
    return handles;
}

bool MacWorkspace::isRunning(const std::string& bundleIdentifier) {
    const auto world = machine_.lock();
    return std::any_of(world->running.begin(), world->running.end(), [&](const RunningApp& app) {
        return app.bundle.bundleIdentifier == bundleIdentifier;
    });
}

bool MacWorkspace::openURL(const std::string& url) {
    const auto world = machine_.lock();
    if (world->failures.has<NothingOpens>() || !hasHandler(url)) {
        return false;
    }
    world->records.openedURLs.push_back(url);
    return true;
}

std::optional<std::string> MacWorkspace::applicationPath(const std::string& bundleIdentifier) {
    const auto world = machine_.lock();
    const InstalledApp* const app = findInstalled(*world, bundleIdentifier);
    return app != nullptr ? std::optional{app->path} : std::nullopt;
}

void MacWorkspace::openApplication(const std::string& path) {
    const auto world = machine_.lock();
    const InstalledApp* const app = findByPath(*world, path);
    if (app == nullptr) {
        return;
    }
    world->records.openedApplications.push_back(app->path);
    const bool runs =
        std::any_of(world->running.begin(), world->running.end(),
                    [app](const RunningApp& running) { return running.bundle.path == app->path; });
    if (!runs) {
        launch(*world, *app);
    }
}

std::optional<EncodedImage> MacWorkspace::icon(const std::string& path, int size) {
    const std::string_view name = withoutExtension(lastPathComponent(path));
    const auto world = machine_.lock();
    const auto& processes = world->processes.all();
    const bool known = findByPath(*world, path) != nullptr ||
                       std::any_of(processes.begin(), processes.end(), [&](const Process& process) {
                           return process.path.starts_with(path);
                       });
    if (!known || name.empty()) {
        return std::nullopt;
    }
    return AppIcon::tile(name, size);
}

ObserverHandle MacWorkspace::observeSleep(std::function<void()> willSleep,
                                          std::function<void()> didWake) {
    auto observer = std::make_shared<Observer>();
    observer->willSleep = std::move(willSleep);
    observer->didWake = std::move(didWake);
    observers_.push_back(observer);
    return observer;
}

std::vector<std::shared_ptr<MacWorkspace::Observer>> MacWorkspace::liveObservers() {
    std::vector<std::shared_ptr<Observer>> live;
    for (const auto& observer : observers_) {
        if (auto held = observer.lock()) {
            live.push_back(std::move(held));
        }
    }
    observers_.assign(live.begin(), live.end());
    return live;
}

void MacWorkspace::sleep() {
    for (const auto& observer : liveObservers()) {
        observer->willSleep();
    }
    machine_.lock()->time.asleep = true;
}

void MacWorkspace::wake() {
    machine_.lock()->time.asleep = false;
    for (const auto& observer : liveObservers()) {
        observer->didWake();
    }
}

std::size_t MacWorkspace::observerCount() const {
    return static_cast<std::size_t>(
        std::count_if(observers_.begin(), observers_.end(),
                      [](const auto& observer) { return !observer.expired(); }));
}

} // namespace pacelet::Simulated
