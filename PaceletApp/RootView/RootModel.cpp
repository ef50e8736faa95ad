#include "PaceletApp/RootView/RootModel.h"

#include "PaceletApp/Support/QtText.h"

namespace pacelet {

RootModel::RootModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects}, sidebar_{objects.monitor, objects.router},
      overview_{objects.monitor, objects.router, objects.actions, objects.scheduler},
      dialog_{objects.actions}, toastClock_{objects.actions, objects.scheduler} {
    connect(&objects.router, &Router::screenChanged, this, &RootModel::screenChanged);
    connect(&objects.router, &Router::browserChanged, this, &RootModel::browserChanged);
    connect(&objects.actions, &FixActions::toastChanged, this, &RootModel::toastChanged);
    connect(&objects.preferences, &AppPreferences::onboardedChanged, this,
            &RootModel::showsOnboardingChanged);
    connect(&objects.monitor, &Monitor::windowVisibleChanged, this,
            &RootModel::showsOnboardingChanged);
}

QString RootModel::screen() const {
    return qtText(rawValue(objects_.router.screen()));
}

QString RootModel::toast() const {
    return qtText(objects_.actions.toast().value_or(std::string{}));
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

void RootModel::run(int command) {
    if (command < 0 || static_cast<std::size_t>(command) >= commands_.size()) {
        return;
    }
    const Command& chosen = commands_[static_cast<std::size_t>(command)];
    switch (chosen.action) {
    case Command::Action::checkNow:
        return objects_.monitor.checkNow();
    case Command::Action::find:
        return objects_.router.find();
    case Command::Action::showScreen:
        return objects_.router.setScreen(chosen.screen);
    case Command::Action::closeWindow:
        Q_EMIT closeRequested();
        return;
    case Command::Action::quit:
        Q_EMIT quitRequested();
        return;
    }
}

} // namespace pacelet
