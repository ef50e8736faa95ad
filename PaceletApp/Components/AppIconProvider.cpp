#include "PaceletApp/Components/AppIconProvider.h"

#include <QBuffer>
#include <QImageReader>
#include <QRunnable>
#include <QUrl>

#include <algorithm>

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

class Response : public QQuickImageResponse, public QRunnable {
public:
    Response(Workspace& workspace, std::string path, int side)
        : workspace_{workspace},
          path_{std::move(path)},
          side_{side} {
        setAutoDelete(false);
    }

    QQuickTextureFactory* textureFactory() const override {
        return QQuickTextureFactory::textureFactoryForImage(image_);
    }

    void run() override {
        if (const auto icon = workspace_.icon(path_, side_)) {
            image_ = decoded(*icon, side_);
        }
        if (image_.isNull()) {
            // An error would be logged for each such application.
            image_ = QImage{1, 1, QImage::Format_ARGB32_Premultiplied};
            image_.fill(Qt::transparent);
        }
        Q_EMIT finished();
    }

private:
    Workspace& workspace_;
    std::string path_;
    int side_;
    QImage image_;
};

} // namespace

AppIconProvider::AppIconProvider(Workspace& workspace)
    : workspace_{workspace} {
    pool_.setMaxThreadCount(1);
}

QQuickImageResponse* AppIconProvider::requestImageResponse(const QString& id,
                                                           const QSize& requestedSize) {
    const int wanted = std::max(requestedSize.width(), requestedSize.height());
    auto* response = new Response{workspace_, QUrl::fromPercentEncoding(id.toUtf8()).toStdString(),
                                  wanted > 0 ? wanted : defaultSide};
    pool_.start(response);
    return response;
}

} // namespace pacelet
