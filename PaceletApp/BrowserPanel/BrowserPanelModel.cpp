#include "PaceletApp/BrowserPanel/BrowserPanelModel.h"

namespace pacelet {

BrowserPanelModel::BrowserPanelModel(const SharedObjects& objects, ChromiumBrowser browser,
                                     QObject* parent)
    : QObject{parent}, objects_{objects}, browser_{browser} {}

} // namespace pacelet
