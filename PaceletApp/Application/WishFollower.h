#pragma once

#include "Core/Platform/DesktopWishes.h"

#include <functional>

namespace pacelet {

class Application;
class Scheduler;

/// Has the application look as the desktop asks. `wishes` is asked
/// whenever the window comes on show, on another thread, where it may take its time; until it has
/// answered, all stays as it was.
void followWishes(Application& application, Scheduler& scheduler,
                  std::function<DesktopWishes()> wishes);

} // namespace pacelet
