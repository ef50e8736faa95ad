#pragma once

#include "Core/Platform/Workspace.h"

#include <QQuickAsyncImageProvider>
#include <QThreadPool>

namespace pacelet {

/// Serves "image://appicon/PATH", PATH percent-encoded: the icon of the application at that path,
/// as the machine has it. Read and decoded on a thread of its own; for an application without an
/// icon it is a picture of one pixel.
class AppIconProvider : public QQuickAsyncImageProvider {
public:
    /// `workspace` outlives the engine that owns the provider.
    explicit AppIconProvider(Workspace& workspace);

    QQuickImageResponse* requestImageResponse(const QString& id,
                                              const QSize& requestedSize) override;

private:
    Workspace& workspace_;
    QThreadPool pool_;
};

} // namespace pacelet
