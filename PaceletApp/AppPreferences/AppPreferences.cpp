#include "PaceletApp/AppPreferences/AppPreferences.h"

#include <string_view>
#include <utility>

namespace pacelet {

namespace {

constexpr std::string_view onboardedKey = "onboarded";
constexpr std::string_view showMenuBarKey = "showMenuBar";
constexpr std::string_view toldOfLeavingKey = "toldOfLeaving";

} // namespace

AppPreferences::AppPreferences(Preferences& preferences, QObject* parent)
    : QObject{parent},
      preferences_{preferences},
      toldOfLeaving_{preferences.boolean(toldOfLeavingKey).value_or(false)},
      troubleObserver_{preferences.observeTrouble([this] { Q_EMIT troubleChanged(); })},
      onboarded_{preferences.boolean(onboardedKey).value_or(false)},
      showMenuBar_{preferences.boolean(showMenuBarKey).value_or(true)} {}

void AppPreferences::setOnboarded(bool onboarded) {
    if (onboarded != onboarded_) {
        preferences_.setBoolean(onboardedKey, onboarded);
        onboarded_ = onboarded;
    }
}

void AppPreferences::setToldOfLeaving() {
    if (!std::exchange(toldOfLeaving_, true)) {
        preferences_.setBoolean(toldOfLeavingKey, true);
    }
}

void AppPreferences::setShowMenuBar(bool show) {
    if (show != showMenuBar_) {
        preferences_.setBoolean(showMenuBarKey, show);
        showMenuBar_ = show;
    }
}

} // namespace pacelet
