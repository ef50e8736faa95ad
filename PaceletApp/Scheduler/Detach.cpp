#include "PaceletApp/Scheduler/Detach.h"

#include "Core/Support/Precondition.h"
#include "PaceletApp/Scheduler/Scheduler.h"

#include <exception>
#include <string>
#include <utility>

namespace pacelet {

namespace {

QCoro::Task<> supervise(QCoro::Task<> task) {
    try {
        co_await task;
    } catch (const SchedulerClosed&) {
        co_return;
    } catch (const std::exception& error) {
        invariantBreach(std::string{"a task of the UI thread failed: "} + error.what());
    }
}

} // namespace

void detach(QCoro::Task<> task) {
    supervise(std::move(task));
}

} // namespace pacelet
