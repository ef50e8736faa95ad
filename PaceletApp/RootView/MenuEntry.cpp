#include "PaceletApp/RootView/MenuEntry.h"

#include "PaceletApp/Support/QtText.h"

#include <QKeySequence>

namespace pacelet {

std::vector<MenuEntry> menuEntries(std::span<const Command> commands, bool canCheckForUpdates) {
    std::vector<MenuEntry> entries;
    for (const Command& command : commands) {
        const QKeySequence keys{qtText(command.shortcut), QKeySequence::PortableText};
        entries.push_back({.title = qtText(command.title),
                           .keys = keys.toString(QKeySequence::NativeText),
                           .startsGroup = command.startsGroup,
                           .available = command.action != Command::Action::checkForUpdates ||
                                        canCheckForUpdates});
    }
    return entries;
}

std::vector<ListRole<MenuEntry>> MenuEntry::roles() {
    using Entry = MenuEntry;
    return {
        {"title", [](const Entry& entry) { return entry.title; }},
        {"keys", [](const Entry& entry) { return entry.keys; }},
        {"startsGroup", [](const Entry& entry) { return entry.startsGroup; }},
        {"available", [](const Entry& entry) { return entry.available; }},
    };
}

} // namespace pacelet
