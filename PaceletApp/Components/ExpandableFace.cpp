#include "PaceletApp/Components/ExpandableFace.h"

#include <QQmlContext>
#include <QQmlProperty>
#include <QQuickWindow>

namespace pacelet {

namespace {

constexpr const char* expandedKey = "expanded";

QAccessibleInterface* makeFace(const QString& className, QObject* object) {
    const bool fits = className == QLatin1String{"QQuickAbstractButton"} &&
                      object->metaObject()->indexOfProperty(expandedKey) >= 0;
    auto* const button = fits ? qobject_cast<QQuickItem*>(object) : nullptr;
    return button != nullptr ? new ExpandableFace{*button} : nullptr;
}

/// The controls below. All other words there belong to the button's own.
void collect(const QQuickItem& item, QList<QQuickItem*>& found) {
    for (QQuickItem* const child : item.childItems()) {
        if (child->isVisible() && child->activeFocusOnTab() &&
            QAccessible::queryAccessibleInterface(child) != nullptr) {
            found.append(child);
        } else {
            collect(*child, found);
        }
    }
}

} // namespace

void ExpandableFace::install() {
    QAccessible::installFactory(makeFace);
}

QWindow* ExpandableFace::window() const {
    return button().window();
}

QRect ExpandableFace::rect() const {
    const QRectF inScene = button().mapRectToScene(button().boundingRect());
    const QPoint corner = window() != nullptr ? window()->mapToGlobal(QPoint{}) : QPoint{};
    return inScene.toRect().translated(corner);
}

QAccessibleInterface* ExpandableFace::parent() const {
    for (QQuickItem* above = button().parentItem(); above != nullptr; above = above->parentItem()) {
        if (QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(above)) {
            return face;
        }
    }
    return QAccessible::queryAccessibleInterface(window());
}

QList<QQuickItem*> ExpandableFace::children() const {
    QList<QQuickItem*> found;
    collect(button(), found);
    return found;
}

QAccessibleInterface* ExpandableFace::child(int index) const {
    return QAccessible::queryAccessibleInterface(children().value(index));
}

int ExpandableFace::childCount() const {
    return static_cast<int>(children().size());
}

int ExpandableFace::indexOfChild(const QAccessibleInterface* child) const {
    const QList<QQuickItem*> all = children();
    return static_cast<int>(all.indexOf(qobject_cast<QQuickItem*>(child->object())));
}

QString ExpandableFace::text(QAccessible::Text kind) const {
    const auto given = [this](const QString& key) {
        return QQmlProperty::read(object(), key, qmlContext(object())).toString();
    };
    switch (kind) {
    case QAccessible::Name:
        return given(QStringLiteral("Accessible.name"));
    case QAccessible::Description:
        return given(QStringLiteral("Accessible.description"));
    default:
        return {};
    }
}

QAccessible::State ExpandableFace::state() const {
    const bool isOpen = object()->property(expandedKey).toBool();
    QAccessible::State state;
    state.focusable = true;
    state.focused = button().hasActiveFocus();
    state.expandable = true;
    state.expanded = isOpen;
    state.collapsed = !isOpen;
    state.disabled = !button().isEnabled();
    state.invisible = !button().isVisible() || window() == nullptr || !window()->isVisible();
    return state;
}

void* ExpandableFace::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : QAccessibleObject::interface_cast(type);
}

QStringList ExpandableFace::actionNames() const {
    return {pressAction(), setFocusAction()};
}

void ExpandableFace::doAction(const QString& name) {
    if (name == pressAction()) {
        QMetaObject::invokeMethod(object(), "clicked");
    } else if (name == setFocusAction()) {
        button().forceActiveFocus(Qt::OtherFocusReason);
    }
}

} // namespace pacelet
