#pragma once

#include "Core/Browser/ChromiumBrowser.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// The sheet in which the user cleans up the tabs of one browser.
class BrowserPanelModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")

public:
    BrowserPanelModel(const SharedObjects& objects, ChromiumBrowser browser,
                      QObject* parent = nullptr);

private:
    SharedObjects objects_;
    ChromiumBrowser browser_;
};

} // namespace pacelet
