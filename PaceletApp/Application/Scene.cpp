#include "PaceletApp/Application/Scene.h"

#include "Core/Platform/Workspace.h"
#include "Core/Support/Precondition.h"
#include "PaceletApp/Components/ScreenModule.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QUrl>

namespace pacelet {

namespace {

const QString moduleFolder = QStringLiteral("qrc:/qt/qml/Pacelet/");

} // namespace

Scene::Scene(QQmlEngine& engine, const QString& file, std::unique_ptr<QObject> model)
    : model_{std::move(model)} {
    QQmlEngine::setObjectOwnership(model_.get(), QQmlEngine::CppOwnership);
    QQmlComponent component{&engine, QUrl{moduleFolder + file}};
    precondition(component.isReady(), qPrintable(component.errorString()));
    std::unique_ptr<QObject> made{component.createWithInitialProperties(
        {{QStringLiteral("model"), QVariant::fromValue(model_.get())}})};
    precondition(made != nullptr, qPrintable(component.errorString()));
    window_.reset(qobject_cast<QQuickWindow*>(made.release()));
    precondition(window_ != nullptr, "a scene is no window");
}

Scene::~Scene() {
    for (QQuickItem* const item : window_->contentItem()->childItems()) {
        delete item;
    }
    // Textures whose pictures have gone are freed by the next frame, and by nothing else.
    window_->releaseResources();
    window_->grabWindow();
}

std::unique_ptr<QQmlEngine> makeEngine() {
    auto engine = std::make_unique<QQmlEngine>();
    installScreens(*engine);
    return engine;
}

void readAhead(QQmlEngine& engine) {
    for (const char* const file : {"MainWindow.qml", "OverviewView.qml"}) {
        auto* const reading = new QQmlComponent{&engine, QUrl{moduleFolder + QLatin1String{file}},
                                                QQmlComponent::Asynchronous, &engine};
        // What was read stays with the engine.
        QObject::connect(reading, &QQmlComponent::statusChanged, reading, &QObject::deleteLater);
    }
}

void setWishes(QQmlEngine& engine, const DesktopWishes& wishes) {
    QQmlComponent told{&engine, QUrl{moduleFolder + QStringLiteral("Wishes.qml")}};
    const std::unique_ptr<QObject> done{
        told.createWithInitialProperties({{QStringLiteral("reducedMotion"), wishes.reducedMotion},
                                          {QStringLiteral("highContrast"), wishes.highContrast}})};
    precondition(done != nullptr, qPrintable(told.errorString()));
}

} // namespace pacelet
