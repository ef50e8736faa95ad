#pragma once

class QQmlEngine;

namespace pacelet {

/// Makes the QML module "Pacelet" and the glyphs known to `engine`.
void installScreens(QQmlEngine& engine);

} // namespace pacelet
