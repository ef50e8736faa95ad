#include "PaceletApp/Scheduler/RealScheduler.h"

namespace pacelet {

namespace {

/// The work blocks on tools far more than it computes, so there are more threads than cores: a
/// speed test and an unanswered password prompt must not hold up the next look at the machine.
constexpr std::size_t poolSize = 16;

/// As good as for ever.
constexpr Seconds longestWait{1e9};

} // namespace

RealScheduler::RealScheduler(Clock& clock)
    : Scheduler{clock},
      alarm_{[this] { runDue(); }},
      pool_{poolSize} {}

RealScheduler::~RealScheduler() {
    pool_.waitForDone(longestWait);
    close();
    finishJobs();
}

MonotonicTime RealScheduler::monotonicNow() {
    return Alarm::now();
}

bool RealScheduler::waitForBackground(Seconds limit) {
    return pool_.waitForDone(limit);
}

void RealScheduler::arm() {
    alarm_.set(events().nextDue());
}

void RealScheduler::runDue() {
    events().runDue(monotonicNow());
    arm();
}

void RealScheduler::start(BackgroundJob& job) {
    pool_.start([&job] { job.run(); });
}

void RealScheduler::jobDone(BackgroundJob& job) {
    {
        const std::lock_guard lock{finishedMutex_};
        finished_.push_back(&job);
    }
    QMetaObject::invokeMethod(
        &mailbox_, [this] { finishJobs(); }, Qt::QueuedConnection);
}

void RealScheduler::finishJobs() {
    std::vector<BackgroundJob*> finished;
    {
        const std::lock_guard lock{finishedMutex_};
        finished.swap(finished_);
    }
    for (BackgroundJob* job : finished) {
        job->finish();
    }
}

} // namespace pacelet
