#include "PaceletApp/Router/Router.h"

#include <utility>

namespace pacelet {

bool Router::takeCausesWanted() {
    return std::exchange(causesWanted_, false);
}

void Router::showCauses() {
    causesWanted_ = true;
    setScreen(Screen::usage);
}

void Router::find() {
    setScreen(Screen::processes);
    focusSearch_ = focusSearch_ + 1;
}

} // namespace pacelet
