#include "PaceletApp/Application/Scene.h"

#include "Core/Platform/Workspace.h"
#include "Core/Support/Precondition.h"
#include "PaceletApp/Components/AppIconProvider.h"
#include "PaceletApp/Components/ScreenModule.h"

#include <QPixmapCache>
#include <QQmlComponent>
#include <QUrl>

#include <malloc.h>

namespace pacelet {

Scene::Scene(QQmlEngine& engine, const QString& file, std::unique_ptr<QObject> model)
    : model_{std::move(model)} {
    QQmlEngine::setObjectOwnership(model_.get(), QQmlEngine::CppOwnership);
    QQmlComponent component{&engine, QUrl{QStringLiteral("qrc:/qt/qml/Pacelet/") + file}};
    precondition(component.isReady(), qPrintable(component.errorString()));
    std::unique_ptr<QObject> made{component.createWithInitialProperties(
        {{QStringLiteral("model"), QVariant::fromValue(model_.get())}})};
    precondition(made != nullptr, qPrintable(component.errorString()));
    window_.reset(qobject_cast<QQuickWindow*>(made.release()));
    precondition(window_ != nullptr, "a scene is no window");
}

Scene::~Scene() = default;

std::unique_ptr<QQmlEngine> makeEngine(Workspace& workspace) {
    auto engine = std::make_unique<QQmlEngine>();
    installScreens(*engine);
    engine->addImageProvider(QStringLiteral("appicon"), new AppIconProvider{workspace});
    return engine;
}

void releaseSceneMemory() {
    QPixmapCache::clear();
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace pacelet
