#include "tests/PaceletApp/Support/Stage.h"

#include "Core/Support/Precondition.h"
#include "PaceletApp/Components/ScreenModule.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QTest>

namespace pacelet {

Stage::Stage(const QByteArray& body, const QVariantMap& context, QSize size)
    : WindowProbe{StageGround::view} {
    installScreens(engine());
    for (auto each = context.begin(); each != context.end(); ++each) {
        engine().rootContext()->setContextProperty(each.key(), each.value());
    }
    QQmlComponent component{&engine()};
    component.setData("import QtQuick\nimport Pacelet\nItem {\n"
                      "Component.onCompleted: Theme.reducedMotion = true\n" +
                          body + "\n}",
                      QUrl{QStringLiteral("stage.qml")});
    QObject* root = component.create();
    precondition(root != nullptr, qPrintable(component.errorString()));
    view().setResizeMode(QQuickView::SizeRootObjectToView);
    view().setContent({}, nullptr, root);
    view().resize(size);
    view().show();
    view().requestActivate();
    precondition(QTest::qWaitForWindowActive(&view()), "the stage does not open");
}

Stage::~Stage() {
    // Textures whose pictures have gone are freed by the next frame, and by nothing else.
    delete view().rootObject();
    view().releaseResources();
    view().grabWindow();
}

} // namespace pacelet
