#include "PaceletApp/RootView/RootModel.h"

#include "PaceletApp/Support/QtText.h"

namespace pacelet {

RootModel::RootModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects}, sidebar_{objects.monitor, objects.router},
      overviewFeed_{objects.monitor, objects.scheduler, overview_}, dialog_{objects.actions},
      toastClock_{objects.actions, objects.scheduler} {
    connect(&objects.actions, &FixActions::toastChanged, this, &RootModel::toastChanged);
    connect(&objects.monitor, &Monitor::errorChanged, this, &RootModel::problemChanged);
    connect(&objects.monitor, &Monitor::windowVisibleChanged, this,
            &RootModel::showsOnboardingChanged);
    connect(&objects.preferences, &AppPreferences::onboardedChanged, this,
            &RootModel::showsOnboardingChanged);
    connect(&objects.router, &Router::browserChanged, this, &RootModel::browserChanged);
    connect(&overview_, &OverviewModel::fixWanted, this,
            [this](FixID fix, const std::optional<std::string>& groupID) {
                objects_.actions.perform(fix, objects_.monitor.group(groupID));
            });
    connect(&overview_, &OverviewModel::pauseToggled, &objects.monitor, &Monitor::togglePause);
    connect(&overview_, &OverviewModel::allProcessesWanted, this,
            [this] { objects_.router.setScreen(Screen::processes); });
}

QString RootModel::toast() const {
    return qtText(objects_.actions.toast().value_or(std::string{}));
}

QString RootModel::problem() const {
    return qtText(objects_.monitor.error().value_or(std::string{}));
}

bool RootModel::showsOnboarding() const {
    return !objects_.preferences.onboarded() && objects_.monitor.windowVisible();
}

QString RootModel::browser() const {
    const auto browser = objects_.router.browser();
    return browser ? qtText(rawValue(*browser)) : QString{};
}

QStringList RootModel::shortcuts() const {
    QStringList sequences;
    for (const Command& command : commands_) {
        sequences.append(qtText(command.shortcut));
    }
    return sequences;
}

void RootModel::press(int shortcut) {
    if (shortcut >= 0 && static_cast<std::size_t>(shortcut) < commands_.size()) {
        run(commands_[static_cast<std::size_t>(shortcut)]);
    }
}

void RootModel::run(const Command& command) {
    if (dialog_.isOpen() && command.action != Command::Action::quit) {
        return;
    }
    switch (command.action) {
    case Command::Action::checkNow:
        return objects_.monitor.checkNow();
    case Command::Action::find:
        return objects_.router.find();
    case Command::Action::showScreen:
        return objects_.router.setScreen(command.screen);
    case Command::Action::closeWindow:
        Q_EMIT closeRequested();
        return;
    case Command::Action::quit:
        Q_EMIT quitRequested();
        return;
    }
}

} // namespace pacelet
