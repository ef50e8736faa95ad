#include "tools/session/Session.h"

#include "Core/Support/Text.h"
#include "Hosts/Simulated/Services/AppIcon.h"
#include "PaceletApp/Application/Program.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>

#include <fmt/format.h>

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <utility>

namespace pacelet {

namespace {

/// A window that draws for ever comes to no end.
constexpr int mostTurns = 1000;

/// Qt keeps every frame waiting for 5 ms, in case that more is to be drawn.
void drawAtOnce() {
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
}

/// A captured desktop, whose applications get the same plain icons as those of a simulated Mac: a
/// capture holds none.
class TiledWorkspace : public Workspace {
public:
    explicit TiledWorkspace(Workspace& captured)
        : captured_{captured} {}

    std::vector<std::shared_ptr<RunningApplication>> runningApplications() override {
        return captured_.runningApplications();
    }
    bool isRunning(const std::string& bundleIdentifier) override {
        return captured_.isRunning(bundleIdentifier);
    }
    bool openURL(const std::string& url) override { return captured_.openURL(url); }
    std::optional<std::string> applicationPath(const std::string& bundleIdentifier) override {
        return captured_.applicationPath(bundleIdentifier);
    }
    void openApplication(const std::string& path) override { captured_.openApplication(path); }
    std::optional<EncodedImage> icon(const std::string& path, int size) override {
        const std::string_view name = lastPathComponent(path);
        return name.ends_with(".app")
                   ? std::optional{Simulated::AppIcon::tile(withoutExtension(name), size)}
                   : std::nullopt;
    }
    ObserverHandle observeSleep(std::function<void()> willSleep,
                                std::function<void()> didWake) override {
        return captured_.observeSleep(std::move(willSleep), std::move(didWake));
    }

private:
    Workspace& captured_;
};

} // namespace

Session::Session(std::string_view machine, std::uint64_t seed)
    : mac_{Simulated::makeScenario(machine, seed)} {
    if (mac_) {
        start(mac_->platform(), bundledCatalog());
    } else if (const std::string file{machine}; std::filesystem::exists(file)) {
        replay(Recorded::CaptureFile::read(file));
    } else {
        throw std::invalid_argument{fmt::format("there is no scenario \"{}\"", machine)};
    }
}

Session::Session(std::unique_ptr<Simulated::SimulatedMac> mac,
                 std::optional<ProcessCatalog> catalog, OperatingSystem system,
                 BrowserExtension* extension)
    : mac_{std::move(mac)} {
    Platform platform = mac_->platform();
    platform.system = system;
    platform.browserExtension = extension;
    start(platform, std::move(catalog));
}

void Session::replay(Recorded::Capture capture) {
    replay_ = std::make_unique<Recorded::Replay>(std::move(capture));
    const Platform machine = replay_->platform();
    tiledWorkspace_ = std::make_unique<TiledWorkspace>(machine.workspace);
    start({machine.clock, machine.tools, machine.kernel, *tiledWorkspace_, machine.networkLink,
           machine.windowServer, machine.loginItems, machine.preferences, machine.log, machine.home,
           machine.root, machine.applicationSupport, machine.system, machine.knowledge,
           machine.backgroundItems, machine.browserExtension, machine.abilities},
          bundledCatalog());
}

void Session::start(const Platform& platform, std::optional<ProcessCatalog> catalog) {
    drawAtOnce();
    scheduler_ = std::make_unique<VirtualScheduler>(platform.clock, [this](Seconds span) {
        mac_ ? mac_->machine.advance(span) : replay_->pass(span);
    });
    application_ = std::make_unique<Application>(platform, *scheduler_, std::move(catalog));
    application_->preferences().setOnboarded(true);
    application_->setWishes({.reducedMotion = true});
    application_->start();
}

std::optional<ProcessCatalog> Session::bundledCatalog() {
    return loadCatalog(ResourceLocations::beside(programFolder()));
}

void Session::open(Screen screen) {
    application_->router().setScreen(screen);
    application_->showWindow();
    pass(0);
}

void Session::pass(double seconds) {
    scheduler_->advance(Seconds{seconds});
    QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
    // What is deleted or settled last may still have something to tell.
    int idleTurns = 0;
    for (int turn = 0; turn < mostTurns && idleTurns < 2; ++turn) {
        idleTurns = dispatcher->processEvents(QEventLoop::AllEvents) ? 0 : idleTurns + 1;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        scheduler_->settle();
    }
}

} // namespace pacelet
