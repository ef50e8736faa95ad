#pragma once

#include <QColor>
#include <QImage>
#include <QQuickImageProvider>
#include <QSize>
#include <QString>

namespace pacelet {

/// The glyphs of the interface, drawn from embedded vector files.
namespace Symbols {

/// Resource path of the glyph; that of a neutral one for a name that is not known.
QString file(const QString& name);

bool isKnown(const QString& name);

/// The glyph in one colour, fitted into `size` device pixels.
QImage image(const QString& name, QSize size, const QColor& color);

} // namespace Symbols

/// Serves "image://symbol/NAME?COLOR" with COLOR as "rrggbb" or "aarrggbb"; white without one. The
/// source size is in device pixels.
class SymbolProvider : public QQuickImageProvider {
public:
    SymbolProvider()
        : QQuickImageProvider{QQuickImageProvider::Image} {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace pacelet
