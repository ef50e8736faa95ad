#pragma once

#include "PaceletApp/AppPreferences/AppPreferences.h"
#include "PaceletApp/AppUpdater/AppUpdater.h"
#include "PaceletApp/Components/QuestionModel.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// What the settings window shows and changes. Made when it opens: what the login service says is
/// read then.
class SettingsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    Q_PROPERTY(bool startAtLogin READ startAtLogin WRITE setStartAtLogin NOTIFY startAtLoginChanged)
    Q_PROPERTY(QString loginNote READ loginNote CONSTANT)
    Q_PROPERTY(bool showMenuBar READ showMenuBar WRITE setShowMenuBar NOTIFY showMenuBarChanged)
    /// This delivery of the program has an updater.
    Q_PROPERTY(bool offersUpdates READ offersUpdates CONSTANT)
    Q_PROPERTY(bool checksForUpdates READ checksForUpdates WRITE setChecksForUpdates NOTIFY
                   checksForUpdatesChanged)
    Q_PROPERTY(bool keepHistory READ keepHistory WRITE setKeepHistory NOTIFY keepHistoryChanged)
    /// Before the history is cleared. This window has its own.
    Q_PROPERTY(pacelet::QuestionModel* question READ question CONSTANT)
    /// The history was cleared in this window.
    Q_PROPERTY(bool cleared READ cleared NOTIFY clearedChanged)
    Q_PROPERTY(QString clearTitle READ clearTitle NOTIFY clearedChanged)
    /// Why the settings may not be, or stay, what the user has chosen; mostly empty.
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)

public:
    explicit SettingsModel(const SharedObjects& objects, QObject* parent = nullptr);

    bool startAtLogin() const { return startAtLogin_; }
    QString loginNote() const;
    bool showMenuBar() const { return objects_.preferences.showMenuBar(); }
    bool offersUpdates() const { return objects_.updater.isConfigured(); }
    bool checksForUpdates() const { return objects_.updater.automaticallyChecksForUpdates(); }
    bool keepHistory() const { return objects_.monitor.keepHistory(); }
    QuestionModel* question() { return &question_; }
    bool cleared() const { return cleared_.value(); }
    QString clearTitle() const;
    QString trouble() const;

    /// Asks the login service. When it refuses, the switch goes back to what the service says.
    void setStartAtLogin(bool on);
    void setShowMenuBar(bool show) { objects_.preferences.setShowMenuBar(show); }
    void setChecksForUpdates(bool on);
    void setKeepHistory(bool keep) { objects_.monitor.setKeepHistory(keep); }

    /// Asks whether to remove the history.
    Q_INVOKABLE void askClear();
    /// Removes the history, whether or not the window stays open meanwhile. Files that cannot be
    /// removed stay until they age out.
    void clearHistory();

Q_SIGNALS:
    void startAtLoginChanged();
    void showMenuBarChanged();
    void checksForUpdatesChanged();
    void keepHistoryChanged();
    void clearedChanged();
    void troubleChanged();

private:
    static QCoro::Task<> clear(QPointer<SettingsModel> model, Scheduler& scheduler,
                               UsageStore usage, CauseStore causes);

    SharedObjects objects_;
    bool startAtLogin_;
    QuestionModel question_;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(SettingsModel, bool, cleared_, false,
                                         &SettingsModel::clearedChanged)
};

} // namespace pacelet
