#pragma once

#include "PaceletApp/AppPreferences/AppPreferences.h"
#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/FixActions/ToastClock.h"
#include "PaceletApp/OverviewView/OverviewModel.h"
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
    QML_UNCREATABLE("The program makes it.")
    /// Without its catalog the program shows nothing but one message, for good.
    Q_PROPERTY(bool catalogMissing READ catalogMissing CONSTANT)
    /// Raw value of the screen on show.
    Q_PROPERTY(QString screen READ screen NOTIFY screenChanged)
    Q_PROPERTY(pacelet::SidebarModel* sidebar READ sidebar CONSTANT)
    Q_PROPERTY(pacelet::OverviewModel* overview READ overview CONSTANT)
    Q_PROPERTY(pacelet::DialogModel* dialog READ dialog CONSTANT)
    /// The short message over the window; empty for none.
    Q_PROPERTY(QString toast READ toast NOTIFY toastChanged)
    /// The first-run sheet is due.
    Q_PROPERTY(bool showsOnboarding READ showsOnboarding NOTIFY showsOnboardingChanged)
    /// Bundle identifier of the browser whose tab panel is open; empty for none.
    Q_PROPERTY(QString browser READ browser NOTIFY browserChanged)
    /// Key sequences of the commands, to hand back to `run` by their place in this list.
    Q_PROPERTY(QStringList shortcuts READ shortcuts CONSTANT)

public:
    explicit RootModel(const SharedObjects& objects, QObject* parent = nullptr);

    bool catalogMissing() const { return objects_.monitor.catalog() == nullptr; }
    QString screen() const;
    SidebarModel* sidebar() { return &sidebar_; }
    OverviewModel* overview() { return &overview_; }
    DialogModel* dialog() { return &dialog_; }
    QString toast() const;
    bool showsOnboarding() const;
    QString browser() const;
    QStringList shortcuts() const;

    Q_INVOKABLE void run(int command);
    Q_INVOKABLE void finishOnboarding() { objects_.preferences.setOnboarded(true); }
    Q_INVOKABLE void closeBrowser() { objects_.router.setBrowser({}); }

Q_SIGNALS:
    void screenChanged();
    void toastChanged();
    void showsOnboardingChanged();
    void browserChanged();
    /// The user asked to close the window, or to end the program.
    void closeRequested();
    void quitRequested();

private:
    SharedObjects objects_;
    std::vector<Command> commands_ = commands();
    SidebarModel sidebar_;
    OverviewModel overview_;
    DialogModel dialog_;
    ToastClock toastClock_;
};

} // namespace pacelet
