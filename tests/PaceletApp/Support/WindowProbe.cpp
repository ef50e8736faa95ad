#include "tests/PaceletApp/Support/WindowProbe.h"

#include "Core/Support/Precondition.h"
#include "tests/PaceletApp/Support/SeenTexts.h"

#include <QTest>

#include <algorithm>

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

} // namespace

QObject* WindowProbe::find(const char* name) {
    QObject* found = among(window_.contentItem(), QString::fromLatin1(name));
    precondition(found != nullptr, name);
    return found;
}

QQuickItem* WindowProbe::item(const char* name) {
    auto* found = qobject_cast<QQuickItem*>(find(name));
    precondition(found != nullptr, name);
    return found;
}

std::vector<std::string> WindowProbe::texts() {
    std::vector<std::string> found;
    forEachText(*window_.contentItem(), [&](const QQuickItem& item) {
        found.push_back(item.property("text").toString().toStdString());
    });
    return found;
}

QRectF WindowProbe::edges(const QString& text) {
    QRectF found;
    forEachText(*window_.contentItem(), [&](const QQuickItem& item) {
        if (item.property("text").toString() == text) {
            found = item.mapRectToScene(item.boundingRect());
        }
    });
    precondition(!found.isNull(), qPrintable(text));
    return found;
}

bool WindowProbe::shows(const std::string& text) {
    const auto all = texts();
    return std::find(all.begin(), all.end(), text) != all.end();
}

void WindowProbe::clickText(const QString& text) {
    QTest::mouseClick(&window_, Qt::LeftButton, {}, edges(text).center().toPoint());
}

QPoint WindowProbe::center(const char* name) {
    const QQuickItem* target = item(name);
    return target->mapToScene(target->boundingRect().center()).toPoint();
}

void WindowProbe::click(const char* name) {
    QTest::mouseClick(&window_, Qt::LeftButton, {}, center(name));
}

void WindowProbe::press(int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&window_, static_cast<Qt::Key>(key), modifiers);
}

void WindowProbe::type(const QString& text) {
    for (const QChar letter : text) {
        QTest::keyClick(&window_, letter.toLatin1());
    }
}

void WindowProbe::hover(const char* name) {
    QTest::mouseMove(&window_, center(name));
}

QString WindowProbe::focused() {
    const QQuickItem* holder = window_.activeFocusItem();
    return holder != nullptr ? holder->objectName() : QString{};
}

} // namespace pacelet
