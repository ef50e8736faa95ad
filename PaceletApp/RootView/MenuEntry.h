#pragma once

#include "PaceletApp/Models/KeyedListModel.h"
#include "PaceletApp/Router/Commands.h"

#include <QString>

#include <span>
#include <vector>

namespace pacelet {

/// A line of the window's menu.
struct MenuEntry {
    QString title;
    QString keys; ///< as the desktop writes them; empty for none
    bool startsGroup = false;
    bool available = true;

    std::string key() const { return title.toStdString(); }
    /// title, keys, startsGroup and available.
    static std::vector<ListRole<MenuEntry>> roles();

    bool operator==(const MenuEntry&) const = default;
};

/// One line a command, in their order.
std::vector<MenuEntry> menuEntries(std::span<const Command> commands, bool canCheckForUpdates);

using MenuListModel = KeyedListModel<MenuEntry>;

} // namespace pacelet
