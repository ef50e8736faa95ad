#pragma once

#include "tools/session/Session.h"

#include <QSize>

#include <functional>
#include <string>
#include <vector>

namespace pacelet::gallery {

/// The least size of the main window.
inline constexpr QSize leastSize{1000, 700};

/// A picture of the running program.
struct Shot {
    std::string name;     ///< of the file, without its end: "overview-quiet"
    std::string scenario; ///< the simulated Mac, or the file of a captured machine
    /// Brings the program to what the picture is of, with the main window open.
    std::function<void(Session&)> drive;
    QSize size{1200, 860};
    /// The window that the picture is of; null stands for the main window.
    std::function<QQuickWindow*(Application&)> window = {};
    /// Shows names and figures that no window can hold.
    bool boundless = false;
};

/// Opens a screen and lets enough time pass for the figures to settle.
std::function<void(Session&)> watching(Screen screen, double seconds = 30);

/// Starts applications whose names are as long as usual ones get, and hard at work.
void runLongUsualNames(Session& session);

// One function a screen.
std::vector<Shot> overviewShots();
std::vector<Shot> processesShots();
std::vector<Shot> backgroundItemsShots();
std::vector<Shot> internetShots();
std::vector<Shot> usageShots();
std::vector<Shot> browserShots();
std::vector<Shot> settingsShots();
std::vector<Shot> panelShots();

/// All of the above.
std::vector<Shot> allShots();

/// Every screen on one simulated Mac or captured machine.
std::vector<Shot> tour(const std::string& scenario);

} // namespace pacelet::gallery
