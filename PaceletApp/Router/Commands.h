#pragma once

#include "PaceletApp/Router/Screen.h"

#include <string>
#include <vector>

namespace pacelet {

/// What the menu and the keyboard can do in the main window.
struct Command {
    enum class Action { checkNow, find, showScreen, settings, checkForUpdates, closeWindow, quit };

    Action action{};
    Screen screen = Screen::overview; ///< for `showScreen`
    std::string title;
    std::string shortcut;     ///< in the portable form of key sequences, as in "Ctrl+R", or empty
    bool startsGroup = false; ///< a divider stands before it

    bool operator==(const Command&) const = default;
};

/// All commands, in the order of the menu; the one for updates only where there is an updater.
std::vector<Command> commands(bool offersUpdates);

} // namespace pacelet
