#include "PaceletApp/Router/Router.h"

#include <utility>

namespace pacelet {

void Router::setScreen(Screen screen) {
    if (std::exchange(screen_, screen) != screen) {
        Q_EMIT screenChanged();
    }
}

void Router::setExpandedID(std::optional<std::string> id) {
    if (id != expandedID_) {
        expandedID_ = std::move(id);
        Q_EMIT expandedIDChanged();
    }
}

void Router::setBrowser(std::optional<ChromiumBrowser> browser) {
    if (std::exchange(browser_, browser) != browser) {
        Q_EMIT browserChanged();
    }
}

bool Router::takeCausesWanted() {
    return std::exchange(causesWanted_, false);
}

void Router::showCauses() {
    causesWanted_ = true;
    setScreen(Screen::usage);
}

void Router::find() {
    setScreen(Screen::processes);
    ++focusSearch_;
    Q_EMIT focusSearchChanged();
}

} // namespace pacelet
