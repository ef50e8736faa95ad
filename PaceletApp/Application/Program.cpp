#include "PaceletApp/Application/Program.h"

#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Application/MainWindow.h"
#include "PaceletApp/Components/Typography.h"
#include "PaceletApp/Scheduler/RealScheduler.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace pacelet {

namespace {

/// How long the end of the program waits for tools that are still running.
constexpr Seconds patience{1};

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// Nothing here needs a graphics card, and the light renderer keeps the program itself cheap.
int& withLightGraphics(int& argc) {
    if (!isSet("QT_QUICK_BACKEND")) {
        qputenv("QT_QUICK_BACKEND", "software");
    }
    return argc;
}

int showWindow(const Platform& platform, Scheduler& scheduler) {
    Application objects{platform, scheduler,
                        loadCatalog(ResourceLocations::beside(programFolder()))};
    MainWindow window{objects.shared(), platform.workspace};
    window.show();
    return QCoreApplication::exec();
}

} // namespace

bool hasDisplay() {
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM");
}

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
    QGuiApplication::setDesktopFileName(QStringLiteral("pacelet"));
    installFonts();
}

int Program::run(const Platform& platform) {
    RealScheduler scheduler{platform.clock};
    const int status = showWindow(platform, scheduler);
    if (!scheduler.waitForBackground(patience)) {
        // A tool that hangs cannot be waited for, nor can what it writes into be taken away.
        std::fflush(nullptr);
        std::_Exit(status);
    }
    return status;
}

} // namespace pacelet
