#pragma once

#include <QQuickItem>
#include <QQuickWindow>

#include <string>
#include <vector>

namespace pacelet {

/// Sees of a window what a user sees, and does to it what a user does.
class WindowProbe {
public:
    explicit WindowProbe(QQuickWindow& window)
        : window_{window} {}

    /// The object with this objectName, in popups too; the test fails without one.
    QObject* find(const char* name);
    QQuickItem* item(const char* name);
    QVariant property(const char* name, const char* key) { return find(name)->property(key); }

    /// Every text that can be seen now, in popups too.
    std::vector<std::string> texts();
    bool shows(const std::string& text);
    /// Where a text stands in the window, the topmost of its kind; the test fails unless it can be
    /// seen.
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

    QQuickWindow& window_;
};

} // namespace pacelet
