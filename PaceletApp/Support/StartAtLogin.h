#pragma once

#include "Core/Platform/LoginItems.h"
#include "PaceletApp/Support/Sentence.h"

#include <string>

namespace pacelet {

/// Whether the login service starts the program.
inline bool startsAtLogin(LoginItems& items) {
    return items.status() == LoginItemStatus::enabled;
}

/// Has the login service start the program at login, or no longer. False when it refused.
inline bool setStartsAtLogin(LoginItems& items, bool on) {
    return on ? items.registerProgram() : items.unregisterProgram();
}

/// What stands below the switch.
inline std::string startAtLoginNote() {
    return sentence("macOS will show a \"Background Items Added\" notice. That's Pacelet, and you "
                    "can turn it off here anytime.");
}

} // namespace pacelet
