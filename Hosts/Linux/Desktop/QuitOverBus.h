#pragma once

#include "Hosts/Linux/Apps/DesktopCatalog.h"

#include <chrono>
#include <cstdint>
#include <span>
#include <string>

namespace pacelet::Linux {

enum class Asking {
    look, ///< only whether it could be asked
    send, ///< ask it
};

/// Asks an application to quit by the action that it has for this on the session bus: its menu's, a
/// media player's, or the one that its menu entry names. The application goes by names that its
/// processes own, by their connections, or by `identifier`, the id of its menu entry.
///
/// True when it has such an action, and has been sent the request if it was to be. Looking counts
/// only what has the user save; what merely ends the program in good order is sent all the same.
/// True, too, for a program that hangs, whose connections answer nothing within `patience`: it gets
/// no request, so that nothing ends that could have been asked, and goes on until it is forced.
bool quitOverBus(const std::string& identifier, std::span<const std::int32_t> pids,
                 const DesktopPlaces& places, Asking asking,
                 std::chrono::microseconds patience = std::chrono::milliseconds{500});

} // namespace pacelet::Linux
