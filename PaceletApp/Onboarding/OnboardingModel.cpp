#include "PaceletApp/Onboarding/OnboardingModel.h"

#include "Core/Platform/Platform.h"
#include "PaceletApp/Support/StartAtLogin.h"

namespace pacelet {

OnboardingModel::OnboardingModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      loginItems_{objects.platform.loginItems} {}

void OnboardingModel::finish() {
    if (startAtLogin_) {
        setStartsAtLogin(loginItems_, true);
    }
}

} // namespace pacelet
