#include "PaceletApp/AppUpdater/AppUpdater.h"

#include <utility>

namespace pacelet {

AppUpdater::AppUpdater(const UpdateSettings& settings,
                       std::unique_ptr<UpdaterController> controller, QObject* parent)
    : QObject{parent},
      controller_{std::move(controller)},
      configured_{controller_ && !settings.publicKey.empty() &&
                  !settings.bundleIdentifier.empty()} {
    if (controller_) {
        readController();
        controller_->observe([this] { readController(); });
    }
}

void AppUpdater::readController() {
    canCheckForUpdates_ = controller_->canCheckForUpdates();
}

bool AppUpdater::automaticallyChecksForUpdates() const {
    return configured_ && controller_->automaticallyChecksForUpdates();
}

void AppUpdater::setAutomaticallyChecksForUpdates(bool on) {
    if (configured_) {
        controller_->setAutomaticallyChecksForUpdates(on);
    }
}

void AppUpdater::windowAppeared() {
    if (configured_ && !std::exchange(started_, true)) {
        controller_->startUpdater();
    }
}

void AppUpdater::checkForUpdates() {
    if (configured_) {
        controller_->checkForUpdates();
    }
}

} // namespace pacelet
