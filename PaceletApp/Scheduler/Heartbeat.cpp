#include "PaceletApp/Scheduler/Heartbeat.h"

#include "PaceletApp/Scheduler/Detach.h"

#include <utility>

namespace pacelet {

namespace {

QCoro::Task<> run(Scheduler& scheduler, std::function<Seconds()> pause, std::function<void()> beat,
                  std::stop_token stop) {
    // Whoever owns the functions asks for the stop before it dies.
    while (!stop.stop_requested()) {
        // Apart from the test: GCC 12 loses the frame of a task that waits inside a condition.
        const Seconds wait = pause();
        const bool passed = co_await scheduler.sleep(wait, stop);
        if (passed) {
            beat();
        }
    }
}

} // namespace

Heartbeat::Heartbeat(Scheduler& scheduler, std::function<Seconds()> pause,
                     std::function<void()> beat)
    : scheduler_{scheduler},
      pause_{std::move(pause)},
      beat_{std::move(beat)} {}

void Heartbeat::setActive(bool active) {
    if (active == isActive()) {
        return;
    }
    running_.reset();
    if (active) {
        running_.emplace();
        detach(run(scheduler_, pause_, beat_, running_->token()));
    }
}

} // namespace pacelet
