#include "PaceletApp/Components/AppIconProvider.h"

#include <QBuffer>
#include <QImageReader>
#include <QQmlEngine>
#include <QUrl>

#include <algorithm>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace pacelet {

/// Where icons come from, for as long as they do.
struct AppIconProvider::Source {
    std::mutex mutex;
    Workspace* workspace; ///< null when it is not to be asked any more

    std::optional<EncodedImage> icon(const std::string& path, int side) {
        const std::lock_guard lock{mutex};
        return workspace != nullptr ? workspace->icon(path, side) : std::nullopt;
    }
};

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

QImage iconOf(AppIconProvider::Source& source, const std::string& path, int side) {
    const auto icon = source.icon(path, side);
    QImage image = icon ? decoded(*icon, side) : QImage{};
    if (image.isNull()) {
        // An error would be logged for each such application.
        image = QImage{1, 1, QImage::Format_ARGB32_Premultiplied};
        image.fill(Qt::transparent);
    }
    return image;
}

/// Is deleted at any moment, and as soon as it is finished, on the thread that asked: so it is
/// there that it finishes.
class Response : public QQuickImageResponse {
public:
    void finish(const QImage& image) {
        image_ = image;
        Q_EMIT finished();
    }

    QQuickTextureFactory* textureFactory() const override {
        return QQuickTextureFactory::textureFactoryForImage(image_);
    }

private:
    QImage image_;
};

} // namespace

void AppIconProvider::install(QQmlEngine& engine, Workspace& workspace) {
    const auto source = std::make_shared<Source>();
    source->workspace = &workspace;
    engine.addImageProvider(QStringLiteral("appicon"), new AppIconProvider{source});
    QObject::connect(&engine, &QObject::destroyed, [source] {
        const std::lock_guard lock{source->mutex};
        source->workspace = nullptr;
    });
}

AppIconProvider::AppIconProvider(std::shared_ptr<Source> source)
    : source_{std::move(source)} {
    pool_.setMaxThreadCount(1);
}

QQuickImageResponse* AppIconProvider::requestImageResponse(const QString& id,
                                                           const QSize& requestedSize) {
    const int wanted = std::max(requestedSize.width(), requestedSize.height());
    auto* const reading = new IconReading{
        [source = source_, path = QUrl::fromPercentEncoding(id.toUtf8()).toStdString(),
         side = wanted > 0 ? wanted : defaultSide] { return iconOf(*source, path, side); }};
    auto* const response = new Response;
    QObject::connect(reading, &IconReading::done, response, &Response::finish,
                     Qt::QueuedConnection);
    pool_.start(reading);
    return response;
}

} // namespace pacelet
