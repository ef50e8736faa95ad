#include "tools/gallery/Photographer.h"

#include "PaceletApp/Components/ScreenModule.h"

#include <QDir>
#include <QEventLoop>
#include <QQmlComponent>
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

bool waitForFrame(QQuickView& view) {
    QEventLoop loop;
    QObject::connect(&view, &QQuickWindow::frameSwapped, &loop, [&loop] { loop.exit(0); });
    QTimer::singleShot(patience, &loop, [&loop] { loop.exit(1); });
    view.show();
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
    engine_.rootContext()->setContextProperty(QStringLiteral("samples"), &samples_);
    // A picture shows where a motion ends.
    QQmlComponent theme{&engine_};
    theme.setData("import QtQml\nimport Pacelet\nQtObject { Component.onCompleted: "
                  "Theme.reducedMotion = true }",
                  QUrl{});
    delete theme.create();
    for (const QQmlError& error : theme.errors()) {
        qWarning("%s", qPrintable(error.toString()));
    }
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

} // namespace pacelet::gallery
