#include "PaceletApp/RootView/RootModel.h"

#include "Core/Knowledge/CatalogFile.h"
#include "PaceletApp/AppUpdater/AppUpdater.h"
#include "PaceletApp/RootView/ScreenModels.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"

#include <QQmlEngine>

#include <algorithm>
#include <utility>

namespace pacelet {

RootModel::RootModel(const SharedObjects& objects, bool hasMenu, QObject* parent)
    : QObject{parent},
      objects_{objects},
      hasMenu_{hasMenu},
      sidebar_{objects.monitor, objects.router},
      sheet_{objects},
      toastClock_{objects.actions, objects.scheduler},
      commands_{commands(objects.updater.isConfigured())} {
    connect(&objects.actions, &FixActions::toastChanged, this, &RootModel::toastChanged);
    connect(&objects.monitor, &Monitor::changed, this, [this](const Fields& fields) {
        if (fields.hold(objects_.monitor.error)) {
            Q_EMIT problemChanged();
        }
        if (fields.hold(objects_.monitor.result)) {
            noteFirstFinding();
        }
    });
    connect(&objects.router, &Router::screenChanged, this, &RootModel::changeScreen);
    connect(&objects.updater, &AppUpdater::canCheckForUpdatesChanged, this,
            &RootModel::refreshMenu);
    connect(&objects.actions, &FixActions::confirmationChanged, this, &RootModel::askNext);
    connect(&objects.actions, &FixActions::stuckAlertChanged, this, &RootModel::askNext);
    connect(&objects.question, &QuestionModel::freed, this, &RootModel::askNext);
    refreshMenu();
    changeScreen();
    askNext();
    const Finding* const first = objects.monitor.result().hero();
    firstFinding_ = first != nullptr ? first->id() : "";
}

RootModel::~RootModel() {
    // The screen takes its question with it, and none is to follow.
    objects_.question.disconnect(this);
}

void RootModel::noteFirstFinding() {
    const Finding* const first = objects_.monitor.result().hero();
    const std::string id = first != nullptr ? first->id() : "";
    if (std::exchange(firstFinding_, id) != id) {
        news_ = first != nullptr ? qtText(first->headline()) : QString{};
    }
}

void RootModel::refreshMenu() {
    menu_.update(menuEntries(commands_, objects_.updater.canCheckForUpdates()));
}

/// Asks what the window itself has to ask, once no screen asks anything. Only whoever closes the
/// window is not kept waiting.
void RootModel::askNext() {
    FixActions& actions = objects_.actions;
    QuestionModel& question = objects_.question;
    const auto& confirmation = actions.confirmation();
    const auto& stuck = actions.stuckAlert();
    const std::string wanted = leaving_       ? "leaving"
                               : confirmation ? confirmation->id.toString().toStdString()
                               : stuck        ? "stuck " + *stuck
                                              : "";
    const bool isOwn = question.isAskedBy(this);
    if (question.isOpen() && !isOwn && !leaving_) {
        return;
    }
    if (std::exchange(asked_, wanted) == wanted && isOwn) {
        return;
    }
    if (leaving_) {
        question.ask(
            this,
            {.title = sentence("Pacelet goes on without its window."),
             .message = sentence("There is no menu-bar item to open it again. Start Pacelet once "
                                 "more, as you did now, to bring its window back."),
             .confirm = "Close Window"},
            [this] {
                setLeaving(false);
                Q_EMIT closeRequested();
            },
            [this] { setLeaving(false); });
    } else if (confirmation) {
        question.ask(
            this, confirmation->question, [&actions] { actions.acceptConfirmation(); },
            [&actions] { actions.dismissConfirmation(); });
    } else if (stuck) {
        question.ask(
            this, FixTexts::stuck(stuck),
            [&actions] {
                actions.dismissStuckAlert();
                actions.confirmRestart();
            },
            [&actions] { actions.dismissStuckAlert(); });
    } else {
        question.withdraw(this);
    }
}

bool RootModel::ready() const {
    return objects_.monitor.catalog() != nullptr;
}

QString RootModel::missingCatalog() const {
    return qtText(sentence(catalogMissing));
}

QString RootModel::screenFile() const {
    return pacelet::screenFile(objects_.router.screen());
}

void RootModel::changeScreen() {
    if (!ready()) {
        return;
    }
    auto left = std::exchange(screenModel_, makeScreenModel(objects_.router.screen(), objects_));
    QQmlEngine::setObjectOwnership(screenModel_.get(), QQmlEngine::CppOwnership);
    Q_EMIT screenChanged();
    // The items that are bound to it go in the event loop's next turn, and go first.
    if (left) {
        left.release()->deleteLater();
    }
}

QString RootModel::toast() const {
    return qtText(objects_.actions.toast().value_or(std::string{}));
}

QString RootModel::problem() const {
    return qtText(objects_.monitor.error().value_or(std::string{}));
}

QStringList RootModel::shortcuts() const {
    QStringList sequences;
    if (!hasMenu_) {
        return sequences;
    }
    for (const Command& command : commands_) {
        sequences.append(qtText(command.shortcut));
    }
    return sequences;
}

int RootModel::closeCommand() const {
    const auto found = std::ranges::find(commands_, Command::Action::closeWindow, &Command::action);
    return static_cast<int>(found - commands_.begin());
}

void RootModel::setLeaving(bool leaving) {
    leaving_ = leaving;
    askNext();
}

void RootModel::press(int command) {
    if (command >= 0 && static_cast<std::size_t>(command) < commands_.size()) {
        perform(commands_[static_cast<std::size_t>(command)]);
    }
}

void RootModel::perform(const Command& command) {
    if ((objects_.question.isOpen() || sheet_.isOpen()) &&
        command.action != Command::Action::quit) {
        return;
    }
    switch (command.action) {
    case Command::Action::checkNow:
        return objects_.monitor.checkNow();
    case Command::Action::find:
        return objects_.router.find();
    case Command::Action::showScreen:
        return objects_.router.setScreen(command.screen);
    case Command::Action::settings:
        Q_EMIT settingsRequested();
        return;
    case Command::Action::checkForUpdates:
        return objects_.updater.checkForUpdates();
    case Command::Action::closeWindow:
        Q_EMIT closeRequested();
        return;
    case Command::Action::quit:
        Q_EMIT quitRequested();
        return;
    }
}

} // namespace pacelet
