#pragma once

#include "PaceletApp/Components/Tone.h"

#include <QMetaEnum>
#include <QString>

namespace pacelet {

/// "green"; empty for none.
inline QString toneText(Tone tone) {
    return tone == Tone::None
               ? QString{}
               : QString::fromLatin1(QMetaEnum::fromType<Tone>().valueToKey(static_cast<int>(tone)))
                     .toLower();
}

} // namespace pacelet
