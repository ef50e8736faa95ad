#pragma once

#include "PaceletApp/Models/KeyedListModel.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Router/Router.h"

#include <QAbstractItemModel>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace pacelet {

/// One destination in the sidebar.
struct SidebarEntry {
    std::string screen; ///< raw value
    QString title;
    QString symbol;
    QString count; ///< empty for none

    const std::string& key() const { return screen; }
    /// title, symbol and count.
    static std::vector<ListRole<SidebarEntry>> roles();

    bool operator==(const SidebarEntry&) const = default;
};

/// How many things the screen lists; nothing where that says nothing.
std::optional<std::size_t> sidebarCount(Screen screen, const Monitor& monitor);

/// The way from screen to screen.
class SidebarModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    /// Roles: title, symbol, count.
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    /// Row of the screen on show.
    Q_PROPERTY(int current READ current NOTIFY currentChanged)

public:
    /// Both outlive this.
    SidebarModel(Monitor& monitor, Router& router, QObject* parent = nullptr);

    QAbstractItemModel* rows() { return &rows_; }
    int current() const { return static_cast<int>(router_.screen()); }

    Q_INVOKABLE void choose(int row);

Q_SIGNALS:
    void currentChanged();

private:
    void refresh();

    Monitor& monitor_;
    Router& router_;
    KeyedListModel<SidebarEntry> rows_;
};

} // namespace pacelet
