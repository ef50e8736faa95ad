#include "PaceletApp/Application/Program.h"

#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Application/MotionFollower.h"
#include "PaceletApp/Application/SingleInstance.h"
#include "PaceletApp/Components/Typography.h"
#include "PaceletApp/Scheduler/RealScheduler.h"

#include <QIcon>

#include <fmt/core.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace pacelet {

namespace {

/// How long the end of the program waits for tools that are still running.
constexpr Seconds patience{1};

/// Nothing here needs a graphics card, and the light renderer keeps the program itself cheap.
int& withLightGraphics(int& argc) {
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND")) {
        qputenv("QT_QUICK_BACKEND", "software");
    }
    return argc;
}

int runUntilQuit(const Platform& platform, Scheduler& scheduler,
                 const ProgramSurroundings& surroundings) {
    Application application{platform, scheduler,
                            loadCatalog(ResourceLocations::beside(programFolder()))};
    QObject::connect(&application, &Application::quitRequested, qApp, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    if (surroundings.prefersReducedMotion) {
        followMotion(application, scheduler, surroundings.prefersReducedMotion);
    }
    if (SingleInstance* const instance = surroundings.instance) {
        QObject::connect(instance, &SingleInstance::showRequested, &application,
                         &Application::showWindow);
        instance->listen();
    }
    application.start();
    if (application.preferences().showMenuBar() && !TrayItem::isAvailable()) {
        fmt::print(stderr,
                   "Pacelet: this desktop has no system tray, so there is no menu-bar item. "
                   "Start Pacelet again to bring its window back.\n");
    }
    application.showWindow();
    return QCoreApplication::exec();
}

} // namespace

std::filesystem::path programFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

void postToUI(std::function<void()> function) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(function),
                              Qt::QueuedConnection);
}

Program::Program(int& argc, char** argv) : application_{withLightGraphics(argc), argv} {
    QGuiApplication::setApplicationName(QStringLiteral("pacelet"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Pacelet"));
    QGuiApplication::setDesktopFileName(QStringLiteral("app.pacelet.Pacelet"));
    QGuiApplication::setWindowIcon(QIcon{QStringLiteral(":/icons/pacelet.svg")});
    // The program lives on in the tray.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    installFonts();
}

int Program::run(const Platform& platform, const ProgramSurroundings& surroundings) {
    RealScheduler scheduler{platform.clock};
    const int status = runUntilQuit(platform, scheduler, surroundings);
    if (!scheduler.waitForBackground(patience)) {
        // A tool that hangs cannot be waited for, nor can what it writes into be taken away.
        std::fflush(nullptr);
        std::_Exit(status);
    }
    return status;
}

} // namespace pacelet
