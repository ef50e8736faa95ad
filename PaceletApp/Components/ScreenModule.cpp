#include "PaceletApp/Components/ScreenModule.h"

#include "PaceletApp/Components/ExpandableFace.h"
#include "PaceletApp/Components/SymbolProvider.h"

#include <QQmlEngine>

// Made by the build. Naming it keeps the linker from dropping the types' registration.
extern void qml_register_types_Pacelet();

namespace pacelet {

void installScreens(QQmlEngine& engine) {
    qml_register_types_Pacelet();
    ExpandableFace::install();
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolProvider);
}

} // namespace pacelet
