#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QVariantMap>

#include <string>
#include <vector>

namespace pacelet {

/// Every text that can be seen below `root` now.
std::vector<std::string> textsBelow(QQuickItem& root);
/// Where a text stands in the window; the test fails unless it can be seen below `root`.
QRectF edgesBelow(QQuickItem& root, const QString& text);

/// Shows a piece of QML in an active window, and does to it what a user does.
class Stage {
public:
    /// `body` stands inside an Item that fills the window; QtQuick and Pacelet are imported, and
    /// the names of `context` are known. Motion takes no time here.
    explicit Stage(const QByteArray& body, const QVariantMap& context = {},
                   QSize size = {640, 480});
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    QQuickView& view() { return view_; }
    QQmlEngine& engine() { return engine_; }

    /// The object with this objectName, in popups too; the test fails without one.
    QObject* find(const char* name);
    QQuickItem* item(const char* name);
    QVariant property(const char* name, const char* key) { return find(name)->property(key); }

    /// Every text that can be seen now, in popups too.
    std::vector<std::string> texts();
    /// Where a text stands in the window; the test fails unless it can be seen.
    QRectF edges(const QString& text);

    void click(const char* name);
    void clickText(const QString& text);
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString& text);
    void hover(const char* name);

    /// objectName of the item that has the focus.
    QString focused();

private:
    QPoint center(const char* name);

    QQmlEngine engine_;
    QQuickView view_;
};

} // namespace pacelet
