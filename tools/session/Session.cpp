#include "tools/session/Session.h"

#include "PaceletApp/Application/Program.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>

#include <fmt/format.h>

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

std::unique_ptr<Simulated::SimulatedMac> scenarioNamed(std::string_view name, std::uint64_t seed) {
    auto mac = Simulated::makeScenario(name, seed);
    if (!mac) {
        throw std::invalid_argument{fmt::format("there is no scenario \"{}\"", name)};
    }
    return mac;
}

} // namespace

Session::Session(std::string_view scenario, std::uint64_t seed)
    : Session{scenarioNamed(scenario, seed), bundledCatalog()} {}

Session::Session(std::unique_ptr<Simulated::SimulatedMac> mac,
                 const std::optional<ProcessCatalog>& catalog, OperatingSystem system,
                 BrowserExtension* extension)
    : mac_{std::move(mac)},
      scheduler_{mac_->machine, [this](Seconds span) { mac_->machine.advance(span); }} {
    drawAtOnce();
    Platform platform = mac_->platform();
    platform.system = system;
    platform.browserExtension = extension;
    start(platform, catalog);
}

Session::Session(Recorded::Capture capture)
    : replay_{std::make_unique<Recorded::Replay>(std::move(capture))},
      scheduler_{replay_->platform().clock, [this](Seconds span) { replay_->advance(span); }} {
    drawAtOnce();
    const Platform machine = replay_->platform();
    tiledWorkspace_ = std::make_unique<TiledWorkspace>(machine.workspace);
    start({machine.clock, machine.tools, machine.kernel, *tiledWorkspace_, machine.networkLink,
           machine.windowServer, machine.loginItems, machine.preferences, machine.log, machine.home,
           machine.root, machine.applicationSupport, machine.system, machine.knowledge,
           machine.backgroundItems, machine.browserExtension, machine.abilities},
          bundledCatalog());
}

void Session::start(const Platform& platform, const std::optional<ProcessCatalog>& catalog) {
    application_ = std::make_unique<Application>(platform, scheduler_, catalog);
    application_->preferences().setOnboarded(true);
    application_->setWishes({.reducedMotion = true});
    application_->start();
    application_->showTray();
}

std::optional<ProcessCatalog> Session::bundledCatalog() {
    return loadCatalog(ownResources());
}

void Session::open(Screen screen) {
    application_->router().setScreen(screen);
    application_->showWindow();
    pass(0);
}

void Session::pass(double seconds) {
    scheduler_.advance(Seconds{seconds});
    QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
    // What is deleted or settled last may still have something to tell.
    int idleTurns = 0;
    for (int turn = 0; turn < mostTurns && idleTurns < 2; ++turn) {
        idleTurns = dispatcher->processEvents(QEventLoop::AllEvents) ? 0 : idleTurns + 1;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        scheduler_.settle();
    }
}

} // namespace pacelet
