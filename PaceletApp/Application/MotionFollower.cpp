#include "PaceletApp/Application/MotionFollower.h"

#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Scheduler/Detach.h"

#include <QPointer>

#include <utility>

namespace pacelet {

namespace {

QCoro::Task<> askDesktop(QPointer<Application> application, Scheduler& scheduler,
                         std::function<bool()> prefersReducedMotion) {
    auto asking = scheduler.runInBackground(std::move(prefersReducedMotion));
    const bool reduced = co_await asking;
    if (application) {
        application->setReducedMotion(reduced);
    }
}

} // namespace

void followMotion(Application& application, Scheduler& scheduler,
                  std::function<bool()> prefersReducedMotion) {
    QObject::connect(
        &application.monitor(), &Monitor::changed, &application,
        [&application, &scheduler, ask = std::move(prefersReducedMotion)](const Fields& fields) {
            const Monitor& monitor = application.monitor();
            if (fields.hold(monitor.windowVisible) && monitor.windowVisible()) {
                detach(askDesktop(&application, scheduler, ask));
            }
        });
}

} // namespace pacelet
