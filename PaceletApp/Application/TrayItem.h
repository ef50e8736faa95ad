#pragma once

#include "PaceletApp/Monitor/Monitor.h"

#include <QObject>
#include <QRect>
#include <QSystemTrayIcon>

#include <optional>

namespace pacelet {

/// The program's permanent face: the dot of the machine's state in the desktop's tray.
class TrayItem final : public QObject {
    Q_OBJECT

public:
    explicit TrayItem(Monitor& monitor, QObject* parent = nullptr);

    /// Whether this desktop has a tray now. One that comes up later is used all the same.
    static bool isAvailable() { return QSystemTrayIcon::isSystemTrayAvailable(); }

    void setShown(bool shown) { icon_.setVisible(shown); }

    /// Where it stands on the desktop; empty when the tray does not tell.
    QRect place() const { return icon_.geometry(); }

Q_SIGNALS:
    void pressed();

private:
    void refresh();

    Monitor& monitor_;
    QSystemTrayIcon icon_;
    std::optional<Status> shownStatus_;
};

} // namespace pacelet
