#include "PaceletApp/Router/Commands.h"

namespace pacelet {

std::vector<Command> commands(bool offersUpdates) {
    std::vector<Command> all{
        {.action = Command::Action::checkNow, .title = "Check now", .shortcut = "Ctrl+R"},
        {.action = Command::Action::find, .title = "Find", .shortcut = "Ctrl+F"},
    };
    for (const ScreenRow& row : screens) {
        all.push_back({.action = Command::Action::showScreen,
                       .screen = row.value,
                       .title = std::string{row.title},
                       .shortcut = "Ctrl+" + std::to_string(position(row.value)),
                       .startsGroup = row.value == Screen::overview});
    }
    all.push_back({.action = Command::Action::settings,
                   .title = "Settings…",
                   .shortcut = "Ctrl+,",
                   .startsGroup = true});
    if (offersUpdates) {
        all.push_back({.action = Command::Action::checkForUpdates, .title = "Check for Updates…"});
    }
    all.push_back({.action = Command::Action::closeWindow,
                   .title = "Close window",
                   .shortcut = "Ctrl+W",
                   .startsGroup = true});
    all.push_back({.action = Command::Action::quit, .title = "Quit Pacelet", .shortcut = "Ctrl+Q"});
    return all;
}

} // namespace pacelet
