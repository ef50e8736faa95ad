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
      onboarded_{preferences.boolean(onboardedKey).value_or(false)},
      showMenuBar_{preferences.boolean(showMenuBarKey).value_or(true)},
      toldOfLeaving_{preferences.boolean(toldOfLeavingKey).value_or(false)},
      troubleObserver_{preferences.observeTrouble([this] { Q_EMIT troubleChanged(); })} {}

void AppPreferences::setOnboarded(bool onboarded) {
    if (std::exchange(onboarded_, onboarded) != onboarded) {
        preferences_.setBoolean(onboardedKey, onboarded);
        Q_EMIT onboardedChanged();
    }
}

void AppPreferences::setToldOfLeaving() {
    if (!std::exchange(toldOfLeaving_, true)) {
        preferences_.setBoolean(toldOfLeavingKey, true);
    }
}

void AppPreferences::setShowMenuBar(bool show) {
    if (std::exchange(showMenuBar_, show) != show) {
        preferences_.setBoolean(showMenuBarKey, show);
        Q_EMIT showMenuBarChanged();
    }
}

} // namespace pacelet
