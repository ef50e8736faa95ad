#pragma once

#include "Core/Platform/Workspace.h"

#include <QImage>
#include <QObject>
#include <QQuickAsyncImageProvider>
#include <QRunnable>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <utility>

class QQmlEngine;

namespace pacelet {

/// Reads an icon on the other thread, which deletes this afterwards.
class IconReading : public QObject, public QRunnable {
    Q_OBJECT

public:
    explicit IconReading(std::function<QImage()> read)
        : read_{std::move(read)} {}

    void run() override { Q_EMIT done(read_()); }

Q_SIGNALS:
    void done(const QImage& image);

private:
    std::function<QImage()> read_;
};

/// Serves "image://appicon/PATH", PATH percent-encoded: the icon of the application at that path,
/// as the machine has it. Read and decoded on a thread of its own; for an application without an
/// icon it is a picture of one pixel.
class AppIconProvider : public QQuickAsyncImageProvider {
public:
    /// Has `engine` know the icons. `workspace` outlives the engine, and is not asked any more once
    /// that goes: Qt may keep a provider, and ask it, for a while longer.
    static void install(QQmlEngine& engine, Workspace& workspace);

    QQuickImageResponse* requestImageResponse(const QString& id,
                                              const QSize& requestedSize) override;

    struct Source;

private:
    explicit AppIconProvider(std::shared_ptr<Source> source);

    std::shared_ptr<Source> source_;
    QThreadPool pool_;
};

} // namespace pacelet
