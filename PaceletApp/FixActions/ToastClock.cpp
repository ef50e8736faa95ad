#include "PaceletApp/FixActions/ToastClock.h"

#include "PaceletApp/Scheduler/Detach.h"

#include <QPointer>

namespace pacelet {

namespace {

QCoro::Task<> clearLater(QPointer<FixActions> actions, Scheduler& scheduler, std::stop_token stop) {
    co_await scheduler.sleep(ToastClock::lifetime, stop);
    if (actions) {
        actions->setToast({});
    }
}

} // namespace

ToastClock::ToastClock(FixActions& actions, Scheduler& scheduler, QObject* parent)
    : QObject{parent},
      actions_{actions},
      scheduler_{scheduler} {
    connect(&actions, &FixActions::toastChanged, this, &ToastClock::restart);
    restart();
}

void ToastClock::restart() {
    wait_.reset();
    if (actions_.toast()) {
        wait_.emplace();
        detach(clearLater(&actions_, scheduler_, wait_->token()));
    }
}

} // namespace pacelet
