#pragma once

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleObject>
#include <QQuickItem>

namespace pacelet {

/// What a screen reader hears of a button that opens and closes what stands below it: QML has no
/// words for that state. The button says how it stands by a bool property of the name "expanded";
/// its name and description are those of `Accessible`, as everywhere.
class ExpandableFace final : public QAccessibleObject, public QAccessibleActionInterface {
public:
    explicit ExpandableFace(QQuickItem& button)
        : QAccessibleObject{&button} {}

    /// Has such buttons found, from now on.
    static void install();

    QWindow* window() const override;
    QRect rect() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QString text(QAccessible::Text kind) const override;
    QAccessible::Role role() const override { return QAccessible::Button; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QQuickItem& button() const { return *static_cast<QQuickItem*>(object()); }
    QList<QQuickItem*> children() const;
};

} // namespace pacelet
