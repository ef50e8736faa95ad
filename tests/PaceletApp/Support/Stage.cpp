#include "tests/PaceletApp/Support/Stage.h"

#include "Core/Support/Precondition.h"
#include "PaceletApp/Components/ScreenModule.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QTest>

namespace pacelet {

namespace {

QObject* among(QObject* from, const QString& name) {
    if (from == nullptr || from->objectName() == name) {
        return from;
    }
    for (QObject* child : from->children()) {
        if (QObject* found = among(child, name)) {
            return found;
        }
    }
    if (const auto* item = qobject_cast<QQuickItem*>(from)) {
        for (QQuickItem* child : item->childItems()) {
            // Items that are children in both trees were seen above.
            if (child->parent() == from) {
                continue;
            }
            if (QObject* found = among(child, name)) {
                return found;
            }
        }
    }
    return nullptr;
}

/// Calls `visit` with every visible item below `item` that has a text of its own.
template<typename Visit>
void forEachText(QQuickItem& item, const Visit& visit) {
    if (!item.isVisible() || item.opacity() <= 0) {
        return;
    }
    if (item.inherits("QQuickText") && !item.property("text").toString().isEmpty()) {
        visit(item);
    }
    for (QQuickItem* child : item.childItems()) {
        forEachText(*child, visit);
    }
}

} // namespace

std::vector<std::string> textsBelow(QQuickItem& root) {
    std::vector<std::string> found;
    forEachText(root, [&](const QQuickItem& item) {
        found.push_back(item.property("text").toString().toStdString());
    });
    return found;
}

QRectF edgesBelow(QQuickItem& root, const QString& text) {
    QRectF found;
    forEachText(root, [&](const QQuickItem& item) {
        if (item.property("text").toString() == text) {
            found = item.mapRectToScene(item.boundingRect());
        }
    });
    precondition(!found.isNull(), qPrintable(text));
    return found;
}

Stage::Stage(const QByteArray& body, const QVariantMap& context, QSize size)
    : view_{&engine_, nullptr} {
    installScreens(engine_);
    for (auto each = context.begin(); each != context.end(); ++each) {
        engine_.rootContext()->setContextProperty(each.key(), each.value());
    }
    QQmlComponent component{&engine_};
    component.setData("import QtQuick\nimport Pacelet\nItem {\n"
                      "Component.onCompleted: Theme.reducedMotion = true\n" +
                          body + "\n}",
                      QUrl{QStringLiteral("stage.qml")});
    QObject* root = component.create();
    precondition(root != nullptr, qPrintable(component.errorString()));
    view_.setResizeMode(QQuickView::SizeRootObjectToView);
    view_.setContent({}, nullptr, root);
    view_.resize(size);
    view_.show();
    view_.requestActivate();
    precondition(QTest::qWaitForWindowActive(&view_), "the stage does not open");
}

Stage::~Stage() {
    // Textures whose pictures have gone are freed by the next frame, and by nothing else.
    delete view_.rootObject();
    view_.releaseResources();
    view_.grabWindow();
}

QObject* Stage::find(const char* name) {
    QObject* found = among(view_.contentItem(), QString::fromLatin1(name));
    precondition(found != nullptr, name);
    return found;
}

QQuickItem* Stage::item(const char* name) {
    auto* found = qobject_cast<QQuickItem*>(find(name));
    precondition(found != nullptr, name);
    return found;
}

std::vector<std::string> Stage::texts() {
    return textsBelow(*view_.contentItem());
}

QRectF Stage::edges(const QString& text) {
    return edgesBelow(*view_.contentItem(), text);
}

void Stage::clickText(const QString& text) {
    QTest::mouseClick(&view_, Qt::LeftButton, {}, edges(text).center().toPoint());
}

QPoint Stage::center(const char* name) {
    const QQuickItem* target = item(name);
    return target->mapToScene(target->boundingRect().center()).toPoint();
}

void Stage::click(const char* name) {
    QTest::mouseClick(&view_, Qt::LeftButton, {}, center(name));
}

void Stage::press(int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&view_, static_cast<Qt::Key>(key), modifiers);
}

void Stage::type(const QString& text) {
    for (const QChar letter : text) {
        QTest::keyClick(&view_, letter.toLatin1());
    }
}

void Stage::hover(const char* name) {
    QTest::mouseMove(&view_, center(name));
}

QString Stage::focused() {
    const QQuickItem* holder = view_.activeFocusItem();
    return holder != nullptr ? holder->objectName() : QString{};
}

} // namespace pacelet
