#pragma once

#include "Core/Platform/DesktopWishes.h"

/// What a program with windows asks of the Mac's desktop.
namespace pacelet::Mac {

/// Whether somebody is logged in here with a screen of their own.
bool hasDesktop();

/// What the user has asked of programs in the settings. Any thread.
DesktopWishes wishesOfDesktop();

/// Has the frames of windows and the menus look dark, whatever the user's choice for others is.
/// Once the application object is there, on the main thread.
void wearDark();

/// Opens the system's own panel about the running program. On the main thread.
void showAboutPanel();

} // namespace pacelet::Mac
