#pragma once

#include "PaceletApp/Components/QuestionModel.h"
#include "PaceletApp/FixActions/ToastClock.h"
#include "PaceletApp/RootView/MenuEntry.h"
#include "PaceletApp/RootView/SheetModel.h"
#include "PaceletApp/RootView/SidebarModel.h"
#include "PaceletApp/Router/Commands.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QProperty>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <string>
#include <vector>

namespace pacelet {

/// What the main window binds to. Made with the window, and gone with it.
class RootModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    /// False without a catalog: the program then shows nothing but one message, for good.
    Q_PROPERTY(bool ready READ ready CONSTANT)
    Q_PROPERTY(QString missingCatalog READ missingCatalog CONSTANT)
    Q_PROPERTY(pacelet::SidebarModel* sidebar READ sidebar CONSTANT)
    /// The file of the screen on show, and the model that it binds to. Null without a catalog.
    Q_PROPERTY(QString screenFile READ screenFile NOTIFY screenChanged)
    Q_PROPERTY(QObject* screenModel READ screenModel NOTIFY screenChanged)
    Q_PROPERTY(pacelet::SheetModel* sheet READ sheet CONSTANT)
    /// What a screen, a sheet or a fix asks, the alert about an application that will not quit,
    /// and, before the window closes, how to bring it back.
    Q_PROPERTY(pacelet::QuestionModel* question READ question CONSTANT)
    /// The short message over the window; empty for none.
    Q_PROPERTY(QString toast READ toast NOTIFY toastChanged)
    /// The first finding, in a few words, when it is another than before; for those who cannot see
    /// it change. What stands there when the window opens is no news.
    Q_PROPERTY(QString news READ news NOTIFY newsChanged)
    /// What went wrong with the last look at the machine; empty when it went well.
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    /// The commands, with the roles of `MenuEntry`; `press` takes a place in this list. Null where
    /// they stand in the menu bar of the application, and have their keys there.
    Q_PROPERTY(QAbstractItemModel* menu READ menu CONSTANT)
    /// Their key sequences, in the same order; empty where there is no menu.
    Q_PROPERTY(QStringList shortcuts READ shortcuts CONSTANT)
    /// The one command that is about the window in front; all others are about the program.
    Q_PROPERTY(int closeCommand READ closeCommand CONSTANT)

public:
    /// All of `objects` outlive this. `hasMenu` is false where the application has a menu bar.
    explicit RootModel(const SharedObjects& objects, bool hasMenu = true,
                       QObject* parent = nullptr);
    ~RootModel() override;

    bool ready() const;
    QString missingCatalog() const;
    SidebarModel* sidebar() { return &sidebar_; }
    QString screenFile() const;
    QObject* screenModel() { return screenModel_.get(); }
    SheetModel* sheet() { return &sheet_; }
    QuestionModel* question() { return &objects_.question; }
    QString toast() const;
    const QString& news() const { return news_.value(); }
    QString problem() const;
    QAbstractItemModel* menu() { return hasMenu_ ? &menu_ : nullptr; }
    QStringList shortcuts() const;
    int closeCommand() const;

    Q_INVOKABLE void press(int command);

    /// While a dialog or a sheet is open, no command reaches what stands behind it.
    void perform(const Command& command);

    void askToLeave() { setLeaving(true); }

Q_SIGNALS:
    void toastChanged();
    void newsChanged();
    void problemChanged();
    void screenChanged();
    /// The user asked for the settings, to close the window, or to end the program.
    void settingsRequested();
    void closeRequested();
    void quitRequested();

private:
    void setLeaving(bool leaving);
    void changeScreen();
    void refreshMenu();
    void askNext();
    void noteFirstFinding();

    SharedObjects objects_;
    bool hasMenu_;
    SidebarModel sidebar_;
    std::unique_ptr<QObject> screenModel_;
    SheetModel sheet_;
    bool leaving_ = false;
    std::string asked_; ///< which question of the window's own came last; empty for none
    ToastClock toastClock_;
    std::vector<Command> commands_;
    MenuListModel menu_;
    std::string firstFinding_; ///< its id; empty for none
    Q_OBJECT_BINDABLE_PROPERTY(RootModel, QString, news_, &RootModel::newsChanged)
};

} // namespace pacelet
