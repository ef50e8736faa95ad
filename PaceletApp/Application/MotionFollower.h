#pragma once

#include <functional>

namespace pacelet {

class Application;
class Scheduler;

/// Has the application's motion follow what the desktop asks for. `prefersReducedMotion` is asked
/// whenever the window comes on show, on another thread, where it may take its time; until it has
/// answered, all stays as it was.
void followMotion(Application& application, Scheduler& scheduler,
                  std::function<bool()> prefersReducedMotion);

} // namespace pacelet
