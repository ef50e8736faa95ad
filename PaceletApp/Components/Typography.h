#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// Makes the fonts of the program. Sizes are in the points of the design, which are logical pixels
/// and may be fractions; a font's own pixel size may not, so the point size is set by way of the
/// display's resolution.
class Typography : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Inter.
    Q_INVOKABLE QFont text(qreal size, int weight = QFont::Normal) const;
    /// Inter with digits of one width; only the weights Normal, DemiBold and Bold are made.
    Q_INVOKABLE QFont figures(qreal size, int weight = QFont::Normal) const;
    /// JetBrains Mono.
    Q_INVOKABLE QFont mono(qreal size, int weight = QFont::Normal) const;
};

/// Makes our own faces known to the application and Inter its default. Call it once, after the
/// application object was created and before anything is drawn.
void installFonts();

} // namespace pacelet
