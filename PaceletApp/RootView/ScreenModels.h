#pragma once

#include "PaceletApp/Router/Screen.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QString>

#include <memory>

namespace pacelet {

/// The model of a screen. What it polls and waits for ends with it.
std::unique_ptr<QObject> makeScreenModel(Screen screen, const SharedObjects& objects);

/// The file in the QML module that shows the model.
QString screenFile(Screen screen);

} // namespace pacelet
