#include "PaceletApp/Application/Program.h"

#include "Core/Support/StandardStreams.h"
#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Application/ApplicationMenu.h"
#include "PaceletApp/Application/IdleMemory.h"
#include "PaceletApp/Application/SingleInstance.h"
#include "PaceletApp/Application/WishFollower.h"
#include "PaceletApp/Components/Typography.h"
#include "PaceletApp/Scheduler/RealScheduler.h"

#include <QFile>
#include <QIcon>
#include <QQuickWindow>
#include <QScreen>
#include <QTimer>

#include <fmt/core.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

namespace pacelet {

namespace {

/// How long the end of the program waits for tools that are still running.
constexpr Seconds patience{1};

/// The tray item comes a moment after the window, which comes so much the sooner.
constexpr std::chrono::milliseconds trayDelay{200};

/// By then a window that has opened stands, with its first answer.
constexpr std::chrono::seconds untilSettled{5};

/// What Qt did with its messages before the start.
QtMessageHandler usualHandler = nullptr;

/// Where Qt finds no windowing system it aborts, as if the program were broken.
void endPlainly(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtFatalMsg) {
        StandardStreams::complain("Pacelet can't open a window here. " +
                                  message.trimmed().toStdString());
        std::_Exit(EXIT_FAILURE);
    }
    usualHandler(type, context, message);
}

/// Much of the program waits on threads; without any it would stand still in silence.
void checkThreads() {
    try {
        std::thread{[] {}}.join();
    } catch (const std::system_error& error) {
        throw std::runtime_error{
            fmt::format("this system lets Pacelet start no thread: {}", error.code().message())};
    }
}

/// What comes before Qt connects to the windowing system.
int& prepared(int& argc) {
    giveFreedMemoryBack();
    checkThreads();
    // Nothing here needs a graphics card, and the light renderer keeps the program itself cheap.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND")) {
        QQuickWindow::setSceneGraphBackend(QStringLiteral("software"));
    }
    usualHandler = qInstallMessageHandler(endPlainly);
    return argc;
}

#ifdef Q_OS_MACOS
/// A Mac tells of a press on the program's place in the Dock by making it the active one, again.
void openFromDock(Application& application) {
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &application,
                     [&application](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive && !application.isOpen()) {
                             application.showWindow();
                         }
                     });
}
#endif

/// Who reads the files of the window waits for this thread wherever a module has to be made known
/// on it.
void letReaderGoOn() {
    QCoreApplication::sendPostedEvents();
}

} // namespace

int Program::runUntilQuit(const Platform& platform, Scheduler& scheduler,
                          const ProgramSurroundings& surroundings) {
    Application application{platform, scheduler, loadCatalog(ownResources()), std::move(engine_)};
    letReaderGoOn();
    QObject::connect(&application, &Application::quitRequested, qApp, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    if (surroundings.wishes) {
        followWishes(application, scheduler, surroundings.wishes);
    }
    if (SingleInstance* const instance = surroundings.instance) {
        QObject::connect(instance, &SingleInstance::showRequested, &application,
                         &Application::showWindow);
        instance->listen();
    }
    application.setRoom([] {
        const QScreen* const screen = QGuiApplication::primaryScreen();
        if (screen == nullptr) {
            return QSize{};
        }
        // A Wayland compositor tells nobody what its panel takes.
        const bool isWayland = QGuiApplication::platformName().startsWith(u"wayland");
        return screen->availableSize() - QSize{0, isWayland ? 40 : 0};
    });
#ifdef Q_OS_MACOS
    const ApplicationMenu menu{application, surroundings.showAbout};
    openFromDock(application);
#endif
    QTimer settled;
    settled.setSingleShot(true);
    settled.callOnTimeout(&settled, releaseIdleMemory);
    QObject::connect(&application, &Application::windowOpened, &settled,
                     [&settled] { settled.start(untilSettled); });
    application.start();
    if (beginning_ == Beginning::shown) {
        application.showWindow();
        QTimer::singleShot(trayDelay, &application, &Application::showTray);
    } else {
        application.showTray();
    }
    return QCoreApplication::exec();
}

ResourceLocations resourcesOf(const std::filesystem::path& programFolder) {
    if (programFolder.filename() != "MacOS") {
        return ResourceLocations::beside(programFolder);
    }
    const std::filesystem::path resources = programFolder.parent_path() / "Resources";
    return {resources, resources / "Pacelet_Core.bundle"};
}

ResourceLocations ownResources() {
    return resourcesOf(QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString());
}

void postToUI(std::function<void()> function) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(function),
                              Qt::QueuedConnection);
}

Program::Program(int& argc, char** argv, Beginning beginning)
    : beginning_{beginning},
      application_{prepared(argc), argv} {
    qInstallMessageHandler(usualHandler);
    if (beginning_ == Beginning::shown) {
        // Meanwhile this thread finds the fonts, and all that the window is to show.
        engine_ = makeEngine();
        readAhead(*engine_);
    }
    QGuiApplication::setApplicationName(QStringLiteral("pacelet"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Pacelet"));
    QGuiApplication::setDesktopFileName(QStringLiteral("app.pacelet.Pacelet"));
    QGuiApplication::setWindowIcon(QIcon{QStringLiteral(":/icons/pacelet.svg")});
    // The program lives on in the tray.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    installFonts();
    letReaderGoOn();
}

int Program::run(const Platform& platform, const ProgramSurroundings& surroundings) {
    RealScheduler scheduler{platform.clock};
    const int status = runUntilQuit(platform, scheduler, surroundings);
    if (surroundings.stopLongTools) {
        surroundings.stopLongTools();
    }
    if (!scheduler.waitForBackground(patience)) {
        // A tool that hangs cannot be waited for, nor can what it writes into be taken away.
        platform.preferences.synchronize();
        std::fflush(nullptr);
        std::_Exit(status);
    }
    return status;
}

} // namespace pacelet
