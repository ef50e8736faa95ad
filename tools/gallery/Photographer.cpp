#include "tools/gallery/Photographer.h"

#include "PaceletApp/Application/Scene.h"
#include "PaceletApp/Components/ScreenModule.h"

#include <QDir>
#include <QEventLoop>
#include <QQmlContext>
#include <QQuickView>
#include <QTimer>
#include <QUrl>

#include <chrono>

namespace pacelet::gallery {

namespace {

using namespace std::chrono_literals;

// Popups open and pictures load in the turns of the event loop that follow the first frame.
constexpr auto settling = 60ms;
constexpr auto patience = 10s;

bool waitForFrame(QQuickWindow& window) {
    QEventLoop loop;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, [&loop] { loop.exit(0); });
    QTimer::singleShot(patience, &loop, [&loop] { loop.exit(1); });
    window.show();
    window.update();
    return loop.exec() == 0;
}

void settle() {
    QEventLoop loop;
    QTimer::singleShot(settling, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

Photographer::Photographer() {
    installScreens(engine_);
    QStringList names = QDir{QStringLiteral(":/symbols")}.entryList(QDir::Files, QDir::Name);
    names.replaceInStrings(QStringLiteral(".svg"), QString{});
    engine_.rootContext()->setContextProperty(QStringLiteral("symbolNames"), names);
    // A picture shows where a motion ends.
    setWishes(engine_, {.reducedMotion = true});
}

std::optional<QImage> Photographer::picture(const QString& resource) {
    QQuickView view{&engine_, nullptr};
    view.setSource(QUrl{QStringLiteral("qrc") + resource});
    if (view.status() != QQuickView::Ready || !waitForFrame(view)) {
        for (const QQmlError& error : view.errors()) {
            qWarning("%s", qPrintable(error.toString()));
        }
        return std::nullopt;
    }
    settle();
    return view.grabWindow();
}

std::optional<QImage> picture(const Shot& shot) {
    Session session{shot.scenario};
    shot.drive(session);
    Application& application = session.application();
    QQuickWindow* const window = shot.window ? shot.window(application) : application.window();
    if (window == nullptr) {
        return std::nullopt;
    }
    if (!shot.size.isEmpty()) {
        window->resize(shot.size);
    }
    if (!waitForFrame(*window)) {
        return std::nullopt;
    }
    settle();
    return window->grabWindow();
}

} // namespace pacelet::gallery
