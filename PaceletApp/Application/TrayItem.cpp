#include "PaceletApp/Application/TrayItem.h"

#include "PaceletApp/MenuBarView/StatusDot.h"

namespace pacelet {

TrayItem::TrayItem(Monitor& monitor, QObject* parent)
    : QObject{parent},
      monitor_{monitor} {
    connect(&monitor, &Monitor::changed, this, [this](const Fields& fields) {
        if (fields.hold(monitor_.result, monitor_.lastChecked)) {
            refresh();
        }
    });
    // Whatever button it is: there is one panel, and no menu.
    connect(&icon_, &QSystemTrayIcon::activated, this, &TrayItem::pressed);
    refresh();
}

void TrayItem::refresh() {
    const Status status = StatusDot::status(monitor_);
    if (shownStatus_ == status) {
        return;
    }
    shownStatus_ = status;
    icon_.setIcon(StatusDot::icon(status));
    icon_.setToolTip(StatusDot::accessibleName(status));
}

} // namespace pacelet
