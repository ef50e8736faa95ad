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
struct SidebarRow {
    std::string screen; ///< raw value
    QString title;
    QString symbol;
    QString count; ///< empty for none
    bool current = false;

    bool operator==(const SidebarRow&) const = default;
};

/// How many things the screen lists; nothing where that says nothing.
std::optional<std::size_t> sidebarCount(Screen screen, const Monitor& monitor);

/// The way from screen to screen.
class SidebarModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")
    /// Roles: screen, title, symbol, count, current.
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)

public:
    SidebarModel(Monitor& monitor, Router& router, QObject* parent = nullptr);

    QAbstractItemModel* rows() { return &rows_; }

    /// Goes to the screen with this raw value.
    Q_INVOKABLE void choose(const QString& screen);

private:
    void refresh();

    Monitor& monitor_;
    Router& router_;
    KeyedListModel<SidebarRow> rows_;
};

} // namespace pacelet
