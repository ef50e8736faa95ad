#pragma once

#include "Core/Fixes/FixRunner.h"
#include "Core/Knowledge/FixID.h"
#include "PaceletApp/FixActions/FixTexts.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Router/Router.h"

#include <QCoroTask>
#include <QObject>
#include <QProperty>
#include <QUuid>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

/// Stands between the buttons and `FixRunner`: asks where work could be lost, carries the fix out,
/// and says how it went. Never fails. Belongs to the UI thread, and lives as long as the program.
class FixActions final : public QObject {
    Q_OBJECT

public:
    /// One dialog.
    struct Confirmation {
        QUuid id; ///< new for each dialog
        Question question;
        std::function<QCoro::Task<>()> action; ///< what the accepting button does
    };

    /// All that is referred to outlives this. `tidyvaultWebsite` is opened where the sibling
    /// application is not installed.
    FixActions(const Platform& platform, Scheduler& scheduler, Monitor& monitor, Router& router,
               std::string tidyvaultWebsite, QObject* parent = nullptr);

    /// The dialog to show.
    const std::optional<Confirmation>& confirmation() const { return confirmation_; }
    /// Short message of the last result.
    const std::optional<std::string>& toast() const { return toast_.value(); }
    /// Name of an application that cannot be quit.
    const std::optional<std::string>& stuckAlert() const { return stuckAlert_.value(); }

    /// What the button of a fix does, for the group that runs under this id now, or for none.
    void press(FixID fix, const std::optional<std::string>& groupID = {});
    /// The same of a fix by its raw value; nothing for a text that is none.
    void press(std::string_view fix, const std::optional<std::string>& groupID = {});

    /// `group` may be null, and is copied.
    void perform(FixID fix, const ProcessGroup* group);
    /// These two may have to find out first what to ask.
    void confirmQuit(const ProcessGroup& group);
    void confirmRestart();

    /// The buttons of the dialog: both close it, the first one runs its action.
    void acceptConfirmation();
    void dismissConfirmation();

    void setToast(std::optional<std::string> text) { toast_ = std::move(text); }
    void dismissStuckAlert() { stuckAlert_ = std::optional<std::string>{}; }

Q_SIGNALS:
    void confirmationChanged();
    void toastChanged();
    void stuckAlertChanged();

private:
    void ask(Question question, std::function<QCoro::Task<>()> action);
    void confirmRebuild();
    QCoro::Task<> findOutAndQuit(ProcessGroup group);
    QCoro::Task<> findOutAndRestart();
    void askToQuit(const ProcessGroup& group, bool canBeAsked);
    void askToRestart(bool asksAgain);
    void reviewTabs(const ProcessGroup* group);
    QCoro::Task<> quit(ProcessGroup group, bool force);
    QCoro::Task<> rebuildSpotlightIndex();
    QCoro::Task<> restartMac();
    void quitEnded(const ProcessGroup& group, bool force, const FixOutcome& outcome);
    void report(const FixOutcome& outcome, const std::optional<std::string>& app);

    std::optional<Confirmation> confirmation_;
    FixRunner runner_;
    Scheduler& scheduler_;
    Monitor& monitor_;
    Router& router_;
    Log& log_;
    std::string tidyvaultWebsite_;
    HostAbilities abilities_;
    Q_OBJECT_BINDABLE_PROPERTY(FixActions, std::optional<std::string>, toast_,
                               &FixActions::toastChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FixActions, std::optional<std::string>, stuckAlert_,
                               &FixActions::stuckAlertChanged)
};

} // namespace pacelet
