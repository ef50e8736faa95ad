#include "PaceletApp/FixActions/FixActions.h"

#include "PaceletApp/Scheduler/Detach.h"
#include "PaceletApp/Support/Sentence.h"

#include <QPointer>
#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace pacelet {

namespace {

constexpr std::string_view logCategory = "fixes";

/// How long an application has to quit.
constexpr Seconds quitTimeout{10};

} // namespace

FixActions::FixActions(const Platform& platform, Scheduler& scheduler, Monitor& monitor,
                       Router& router, std::string tidyvaultWebsite, QObject* parent)
    : QObject{parent},
      runner_{platform},
      scheduler_{scheduler},
      monitor_{monitor},
      router_{router},
      log_{platform.log},
      tidyvaultWebsite_{std::move(tidyvaultWebsite)},
      abilities_{platform.abilities} {}

void FixActions::press(FixID fix, const std::optional<std::string>& groupID) {
    perform(fix, monitor_.group(groupID).get());
}

void FixActions::press(std::string_view fix, const std::optional<std::string>& groupID) {
    if (const auto id = fixIDFromRawValue(fix)) {
        press(*id, groupID);
    }
}

void FixActions::perform(FixID fix, const ProcessGroup* group) {
    switch (fix) {
    case FixID::explain:
        router_.setExpandedID(group != nullptr ? group->id : std::string{});
        router_.setScreen(Screen::processes);
        return;
    case FixID::openSpotlightSettings:
    case FixID::openLoginItemsSettings:
    case FixID::openDisplaySettings:
    case FixID::openAccessibilityDisplay:
    case FixID::openBatterySettings:
    case FixID::openWiFiSettings:
        return runner_.open(*paneOf(fix));
    case FixID::quitApp:
        if (group != nullptr) {
            confirmQuit(*group);
        }
        return;
    case FixID::rebuildSpotlightIndex:
        return confirmRebuild();
    case FixID::reviewTabs:
        return reviewTabs(group);
    case FixID::openTidyvault:
        return runner_.openTidyvault(tidyvaultWebsite_);
    case FixID::restartMac:
        return confirmRestart();
    }
}

void FixActions::reviewTabs(const ProcessGroup* group) {
    if (group == nullptr || !group->appPath) {
        return;
    }
    if (const auto browser = chromiumBrowserAt(*group->appPath)) {
        router_.setBrowser(browser);
    }
}

void FixActions::confirmQuit(const ProcessGroup& group) {
    if (abilities_.alwaysAsks) {
        askToQuit(group, true);
    } else {
        detach(findOutAndQuit(group));
    }
}

void FixActions::confirmRebuild() {
    ask(FixTexts::rebuild(), [this] { return rebuildSpotlightIndex(); });
}

void FixActions::confirmRestart() {
    if (!abilities_.restarts) {
        setToast(sentence(FixTexts::restartByHand));
    } else if (abilities_.alwaysAsks) {
        askToRestart(true);
    } else {
        detach(findOutAndRestart());
    }
}

QCoro::Task<> FixActions::findOutAndQuit(ProcessGroup group) {
    const QPointer<FixActions> self{this};
    auto look = scheduler_.runInBackground([copies = runner_.runningCopies(group)] {
        return std::ranges::all_of(copies, [](const auto& copy) { return copy->canBeAsked(); });
    });
    const bool canBeAsked = co_await look;
    if (self) {
        askToQuit(group, canBeAsked);
    }
}

QCoro::Task<> FixActions::findOutAndRestart() {
    const QPointer<FixActions> self{this};
    auto look =
        scheduler_.runInBackground([runner = runner_] { return runner.asksBeforeRestart(); });
    const bool asksAgain = co_await look;
    if (self) {
        askToRestart(asksAgain);
    }
}

void FixActions::askToQuit(const ProcessGroup& group, bool canBeAsked) {
    ask(canBeAsked ? FixTexts::quit(group.displayName) : FixTexts::quitUnasked(group.displayName),
        [this, group] { return quit(group, false); });
}

void FixActions::askToRestart(bool asksAgain) {
    ask(asksAgain ? FixTexts::restart() : FixTexts::restartAtOnce(),
        [this] { return restartMac(); });
}

void FixActions::ask(Question question, std::function<QCoro::Task<>()> action) {
    confirmation_ = Confirmation{QUuid::createUuid(), std::move(question), std::move(action)};
    Q_EMIT confirmationChanged();
}

void FixActions::acceptConfirmation() {
    if (!confirmation_) {
        return;
    }
    // The action may ask the next question.
    const Confirmation accepted = *std::exchange(confirmation_, {});
    Q_EMIT confirmationChanged();
    detach(accepted.action());
}

void FixActions::dismissConfirmation() {
    if (std::exchange(confirmation_, {})) {
        Q_EMIT confirmationChanged();
    }
}

QCoro::Task<> FixActions::quit(ProcessGroup group, bool force) {
    const QPointer<FixActions> self{this};
    Scheduler& scheduler = scheduler_;
    QuitAttempt attempt = runner_.quit(group, force, quitTimeout);
    std::optional<FixOutcome> outcome = attempt.poll(scheduler.monotonicNow());
    while (!outcome) {
        co_await scheduler.sleep(QuitAttempt::pollInterval);
        outcome = attempt.poll(scheduler.monotonicNow());
    }
    if (self) {
        quitEnded(group, force, *outcome);
    }
}

void FixActions::quitEnded(const ProcessGroup& group, bool force, const FixOutcome& outcome) {
    log_.write(LogLevel::information, logSubsystem, logCategory,
               fmt::format("quit outcome: {}", outcome.description()));
    if (outcome.kind() != FixOutcome::Kind::stillRunning) {
        report(outcome, group.displayName);
        monitor_.checkNow();
    } else if (!force) {
        ask(FixTexts::forceQuit(group.displayName), [this, group] { return quit(group, true); });
    } else {
        monitor_.setStuckApp(group.displayName);
        stuckAlert_ = std::optional{group.displayName};
        monitor_.checkNow();
    }
}

QCoro::Task<> FixActions::rebuildSpotlightIndex() {
    const QPointer<FixActions> self{this};
    auto rebuild =
        scheduler_.runInBackground([runner = runner_] { return runner.rebuildSpotlightIndex(); });
    const FixOutcome outcome = co_await rebuild;
    if (self) {
        report(outcome, {});
    }
}

QCoro::Task<> FixActions::restartMac() {
    const QPointer<FixActions> self{this};
    auto restart = scheduler_.runInBackground([runner = runner_] { return runner.restartMac(); });
    const FixOutcome outcome = co_await restart;
    if (self && outcome.kind() == FixOutcome::Kind::failed) {
        // A Mac has another way there; where nobody always asks, the number is the policy's word.
        const bool isForbidden =
            !abilities_.alwaysAsks && outcome.reason() == FixTexts::notAuthorized;
        setToast(isForbidden ? sentence(FixTexts::restartForbidden)
                             : sentence(FixTexts::restartByHand));
    }
}

void FixActions::report(const FixOutcome& outcome, const std::optional<std::string>& app) {
    setToast(FixTexts::report(outcome, app));
}

} // namespace pacelet
