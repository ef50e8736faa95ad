#include "PaceletApp/Application/WishFollower.h"

#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Scheduler/Detach.h"

#include <QPointer>

#include <utility>

namespace pacelet {

namespace {

QCoro::Task<> askDesktop(QPointer<Application> application, Scheduler& scheduler,
                         std::function<DesktopWishes()> wishes) {
    auto asking = scheduler.runInBackground(std::move(wishes));
    const DesktopWishes told = co_await asking;
    if (application) {
        application->setWishes(told);
    }
}

} // namespace

void followWishes(Application& application, Scheduler& scheduler,
                  std::function<DesktopWishes()> wishes) {
    QObject::connect(&application.monitor(), &Monitor::changed, &application,
                     [&application, &scheduler, ask = std::move(wishes)](const Fields& fields) {
                         const Monitor& monitor = application.monitor();
                         if (fields.hold(monitor.windowVisible) && monitor.windowVisible()) {
                             detach(askDesktop(&application, scheduler, ask));
                         }
                     });
}

} // namespace pacelet
