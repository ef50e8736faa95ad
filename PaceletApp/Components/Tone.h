#pragma once

#include "Core/Sampling/SystemSignals.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// Around the enumeration because QML knows one by the name of what holds it: `Tone.Green`.
namespace Tones {

Q_NAMESPACE
QML_NAMED_ELEMENT(Tone)

/// What the colour of a word, a glyph or a pill says; the theme knows the colours. QML sees no
/// enumerator that begins with a small letter.
enum class Tone {
    None, ///< nothing: the colour of the text around it
    Neutral,
    Green,
    Amber,
    Red,
};
Q_ENUM_NS(Tone)

} // namespace Tones

using Tones::Tone;

/// Green, amber or red.
Tone toneOf(Pressure pressure);
Tone toneOf(Thermal thermal);

} // namespace pacelet
