#pragma once

#include "Core/Platform/Workspace.h"

#include <QQuickAsyncImageProvider>
#include <QThreadPool>

#include <memory>

class QQmlEngine;

namespace pacelet {

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
