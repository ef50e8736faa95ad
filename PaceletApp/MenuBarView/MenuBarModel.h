#pragma once

#include "Core/Platform/LoginItems.h"
#include "PaceletApp/Components/Look.h"
#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/MenuBarView/LiveDot.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QAbstractItemModel>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <string>

namespace pacelet {

/// One of the busiest groups.
struct ConsumerRow {
    std::string id; ///< of the group
    QString name;
    QString cpu; ///< not capped at the power of one core

    const std::string& key() const { return id; }
    /// name and cpu.
    static std::vector<ListRole<ConsumerRow>> roles();

    bool operator==(const ConsumerRow&) const = default;
};

/// The panel of the menu-bar item: the main cause, the three busiest groups, and the one fix that
/// matters. Made when the panel opens, and gone when it closes.
class MenuBarModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    /// Raw value of the machine's state.
    Q_PROPERTY(QString status READ status NOTIFY resultChanged)
    Q_PROPERTY(pacelet::LiveDot* liveDot READ liveDot CONSTANT)
    Q_PROPERTY(QString headline READ headline NOTIFY resultChanged)
    /// Roles: name, cpu. At most three rows.
    Q_PROPERTY(QAbstractItemModel* consumers READ consumers CONSTANT)
    /// The button of the main fix. Its title is empty where there is none.
    Q_PROPERTY(pacelet::FixLook fix READ fix NOTIFY resultChanged)
    Q_PROPERTY(bool startAtLogin READ startAtLogin WRITE setStartAtLogin NOTIFY startAtLoginChanged)
    Q_PROPERTY(QString loginNote READ loginNote CONSTANT)

public:
    MenuBarModel(Monitor& monitor, FixActions& actions, LoginItems& loginItems,
                 Scheduler& scheduler, QObject* parent = nullptr);

    QString status() const;
    LiveDot* liveDot() { return &liveDot_; }
    QString headline() const;
    QAbstractItemModel* consumers() { return &consumers_; }
    FixLook fix() const;
    bool startAtLogin() const { return startAtLogin_; }
    QString loginNote() const;

    /// Asks the login service. When it refuses, the switch goes back to what the service says.
    void setStartAtLogin(bool on);

    Q_INVOKABLE void runFix();
    Q_INVOKABLE void open() { Q_EMIT openRequested(); }
    Q_INVOKABLE void quit() { Q_EMIT quitRequested(); }

Q_SIGNALS:
    void resultChanged();
    void startAtLoginChanged();
    /// Bring the main window forward.
    void openRequested();
    void quitRequested();

private:
    void refreshConsumers();

    Monitor& monitor_;
    FixActions& actions_;
    LoginItems& loginItems_;
    Scheduler& scheduler_;
    LiveDot liveDot_;
    KeyedListModel<ConsumerRow> consumers_;
    bool startAtLogin_;
};

} // namespace pacelet
