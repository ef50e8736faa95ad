#include "PaceletApp/Onboarding/OnboardingModel.h"

namespace pacelet {

OnboardingModel::OnboardingModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects} {}

} // namespace pacelet
