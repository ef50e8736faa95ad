#include "PaceletApp/Onboarding/OnboardingModel.h"

#include "Core/Platform/Platform.h"
#include "PaceletApp/Support/StartAtLogin.h"

#include <utility>

namespace pacelet {

OnboardingModel::OnboardingModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      loginItems_{objects.platform.loginItems} {}

void OnboardingModel::setStartAtLogin(bool on) {
    if (std::exchange(startAtLogin_, on) != on) {
        Q_EMIT startAtLoginChanged();
    }
}

void OnboardingModel::finish() {
    if (startAtLogin_) {
        setStartsAtLogin(loginItems_, true);
    }
}

} // namespace pacelet
