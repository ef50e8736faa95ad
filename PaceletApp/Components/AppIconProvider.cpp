#include "PaceletApp/Components/AppIconProvider.h"

#include <QBuffer>
#include <QImageReader>
#include <QMetaObject>
#include <QUrl>

#include <algorithm>
#include <string>
#include <utility>

namespace pacelet {

namespace {

constexpr int defaultSide = 64;

QImage decoded(const EncodedImage& icon, int side) {
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(icon.bytes.data()),
                                static_cast<qsizetype>(icon.bytes.size()));
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader{&buffer};
    const QSize natural = reader.size();
    if (natural.isValid()) {
        reader.setScaledSize(natural.scaled(side, side, Qt::KeepAspectRatio));
    }
    return reader.read();
}

class Response : public QQuickImageResponse {
public:
    QQuickTextureFactory* textureFactory() const override {
        return QQuickTextureFactory::textureFactoryForImage(image_);
    }

    /// Whoever asked deletes this in its own thread as soon as that is told, so that no other
    /// thread may tell it: an emission looks at its sender once more when all have heard.
    void finish(QImage image) {
        image_ = std::move(image);
        Q_EMIT finished();
    }

private:
    QImage image_;
};

QImage read(Workspace& workspace, const std::string& path, int side) {
    QImage image;
    if (const auto icon = workspace.icon(path, side)) {
        image = decoded(*icon, side);
    }
    if (image.isNull()) {
        // An error would be logged for each such application.
        image = QImage{1, 1, QImage::Format_ARGB32_Premultiplied};
        image.fill(Qt::transparent);
    }
    return image;
}

} // namespace

AppIconProvider::AppIconProvider(Workspace& workspace)
    : workspace_{workspace} {
    pool_.setMaxThreadCount(1);
}

QQuickImageResponse* AppIconProvider::requestImageResponse(const QString& id,
                                                           const QSize& requestedSize) {
    const int wanted = std::max(requestedSize.width(), requestedSize.height());
    auto* const response = new Response;
    pool_.start([response, &workspace = workspace_,
                 path = QUrl::fromPercentEncoding(id.toUtf8()).toStdString(),
                 side = wanted > 0 ? wanted : defaultSide] {
        QMetaObject::invokeMethod(
            response, [response, image = read(workspace, path, side)] { response->finish(image); },
            Qt::QueuedConnection);
    });
    return response;
}

} // namespace pacelet
