#include "PaceletApp/RootView/RootModel.h"

#include "PaceletApp/Support/QtText.h"

namespace pacelet {

RootModel::RootModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects}, sidebar_{objects.monitor, objects.router},
      overviewFeed_{objects.monitor, objects.scheduler, overview_}, dialog_{objects.actions},
      toastClock_{objects.actions, objects.scheduler} {
    connect(&objects.actions, &FixActions::toastChanged, this, &RootModel::toastChanged);
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
