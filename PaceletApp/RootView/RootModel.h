#pragma once

#include "PaceletApp/AppPreferences/AppPreferences.h"
#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/FixActions/ToastClock.h"
#include "PaceletApp/OverviewView/OverviewFeed.h"
#include "PaceletApp/RootView/DialogModel.h"
#include "PaceletApp/RootView/SidebarModel.h"
#include "PaceletApp/Router/Commands.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace pacelet {

/// The long-lived objects that every screen reads and calls.
struct SharedObjects {
    Monitor& monitor;
    Router& router;
    FixActions& actions;
    AppPreferences& preferences;
    Scheduler& scheduler;
};

/// What the main window binds to. Made with the window, and gone with it.
class RootModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    /// False without a catalog: the program then shows nothing but one message, for good.
    Q_PROPERTY(bool ready READ ready CONSTANT)
    Q_PROPERTY(pacelet::SidebarModel* sidebar READ sidebar CONSTANT)
    Q_PROPERTY(pacelet::OverviewModel* overview READ overview CONSTANT)
    Q_PROPERTY(pacelet::DialogModel* dialog READ dialog CONSTANT)
    /// The short message over the window; empty for none.
    Q_PROPERTY(QString toast READ toast NOTIFY toastChanged)
    /// What went wrong with the last look at the machine; empty when it went well.
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    /// The first-run sheet is due.
    Q_PROPERTY(bool showsOnboarding READ showsOnboarding NOTIFY showsOnboardingChanged)
    /// Bundle identifier of the browser whose tab panel is open; empty for none.
    Q_PROPERTY(QString browser READ browser NOTIFY browserChanged)
    /// Key sequences of the commands; `press` takes a place in this list.
    Q_PROPERTY(QStringList shortcuts READ shortcuts CONSTANT)

public:
    /// All of `objects` outlive this.
    explicit RootModel(const SharedObjects& objects, QObject* parent = nullptr);

    bool ready() const { return objects_.monitor.catalog() != nullptr; }
    SidebarModel* sidebar() { return &sidebar_; }
    OverviewModel* overview() { return &overview_; }
    DialogModel* dialog() { return &dialog_; }
    QString toast() const;
    QString problem() const;
    bool showsOnboarding() const;
    QString browser() const;
    QStringList shortcuts() const;

    Q_INVOKABLE void finishOnboarding() { objects_.preferences.setOnboarded(true); }
    Q_INVOKABLE void press(int shortcut);
    Q_INVOKABLE void closeBrowser() { objects_.router.setBrowser({}); }

Q_SIGNALS:
    void toastChanged();
    void problemChanged();
    void showsOnboardingChanged();
    void browserChanged();
    /// The user asked to close the window, or to end the program.
    void closeRequested();
    void quitRequested();

private:
    /// While a dialog is open, no command reaches what stands behind it.
    void run(const Command& command);

    SharedObjects objects_;
    SidebarModel sidebar_;
    OverviewModel overview_;
    OverviewFeed overviewFeed_;
    DialogModel dialog_;
    ToastClock toastClock_;
    std::vector<Command> commands_ = commands();
};

} // namespace pacelet
