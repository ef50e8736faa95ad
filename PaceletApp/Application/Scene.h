#pragma once

#include "Core/Platform/DesktopWishes.h"

#include <QObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QString>

#include <functional>
#include <memory>

namespace pacelet {

/// A window of QML with the model that it binds to. Both live while it is open, and no longer.
class Scene {
public:
    /// `file` is the path of a Window in the QML module; its property "model" is set to `model`.
    Scene(QQmlEngine& engine, const QString& file, std::unique_ptr<QObject> model);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    QQuickWindow& window() { return *window_; }

private:
    std::unique_ptr<QObject> model_;
    std::unique_ptr<QQuickWindow> window_;
};

/// An engine that knows the QML module and the glyphs.
std::unique_ptr<QQmlEngine> makeEngine();

/// Begins to read the files of the main window and of its first screen, and what they import, on
/// the engine's own thread.
void readAhead(QQmlEngine& engine);

/// Has all that is shown look as the desktop asks.
void setWishes(QQmlEngine& engine, const DesktopWishes& wishes);

} // namespace pacelet
