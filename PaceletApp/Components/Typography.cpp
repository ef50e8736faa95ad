#include "PaceletApp/Components/Typography.h"

#include "Core/Support/Precondition.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>
#include <QtMath>

namespace pacelet {

namespace {

const QString textFamily = QStringLiteral("Inter");
// Inter's tabular digits as the ordinary ones of a face of their own: the text engine has no switch
// for OpenType features.
const QString figuresFamily = QStringLiteral("Pacelet Figures");
const QString monoFamily = QStringLiteral("JetBrains Mono");

QFont sized(const QString& family, qreal size, int weight) {
    // The engine takes the resolution as a whole number, too.
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int dotsPerInch = screen != nullptr ? qRound(screen->logicalDotsPerInchY()) : 96;
    QFont font{family};
    font.setPointSizeF(size * 72.0 / dotsPerInch);
    font.setWeight(static_cast<QFont::Weight>(weight));
    return font;
}

} // namespace

QFont Typography::text(qreal size, int weight) const {
    return sized(textFamily, size, weight);
}

QFont Typography::figures(qreal size, int weight) const {
    return sized(figuresFamily, size, weight);
}

QFont Typography::mono(qreal size, int weight) const {
    return sized(monoFamily, size, weight);
}

void installFonts() {
    for (const char* weight : {"Regular", "SemiBold", "Bold"}) {
        const QString file = QStringLiteral(":/fonts/PaceletFigures-%1.otf").arg(weight);
        precondition(QFontDatabase::addApplicationFont(file) >= 0, "a font of our own is broken");
    }
    QFont::insertSubstitution(figuresFamily, textFamily);
    QGuiApplication::setFont(sized(textFamily, 13.5, QFont::Normal));
}

} // namespace pacelet
