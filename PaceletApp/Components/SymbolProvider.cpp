#include "PaceletApp/Components/SymbolProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

namespace pacelet {

namespace {

// The grid that the glyphs are drawn on.
constexpr QSize naturalSize{16, 16};

QString path(const QString& name) {
    return QStringLiteral(":/symbols/") + name + QStringLiteral(".svg");
}

} // namespace

bool Symbols::isKnown(const QString& name) {
    return !name.isEmpty() && !name.contains(u'/') && QFile::exists(path(name));
}

QString Symbols::file(const QString& name) {
    return path(isKnown(name) ? name : QStringLiteral("gearshape"));
}

QImage Symbols::image(const QString& name, QSize size, const QColor& color) {
    QImage image{size, QImage::Format_ARGB32_Premultiplied};
    image.fill(Qt::transparent);
    QSvgRenderer renderer{file(name)};
    const int side = std::min(size.width(), size.height());
    QPainter painter{&image};
    renderer.render(&painter, QRectF{(size.width() - side) / 2.0, (size.height() - side) / 2.0,
                                     static_cast<qreal>(side), static_cast<qreal>(side)});
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

QImage SymbolProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const qsizetype mark = id.indexOf(u'?');
    const QString name = id.left(mark);
    const QColor color{mark < 0 ? QStringLiteral("white") : u'#' + id.mid(mark + 1)};
    const QSize wanted{requestedSize.width() > 0 ? requestedSize.width() : naturalSize.width(),
                       requestedSize.height() > 0 ? requestedSize.height() : naturalSize.height()};
    if (size != nullptr) {
        *size = wanted;
    }
    return Symbols::image(name, wanted, color.isValid() ? color : QColor{Qt::white});
}

} // namespace pacelet
