#pragma once

#include "PaceletApp/Application/Activation.h"

#include <QWindow>

/// What a window owes its desktop and Qt has no word for. Where there is no X server, most of it is
/// not needed.
namespace pacelet::WindowManner {

/// Keeps a window that is yet to be shown out of task bars and pagers.
void leaveTaskBar(QWindow& window);

/// Shows the window, in front where the desktop lets it come there.
void bringForward(QWindow& window, const Activation& activation = {});

} // namespace pacelet::WindowManner
