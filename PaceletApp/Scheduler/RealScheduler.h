#pragma once

#include "PaceletApp/Scheduler/Alarm.h"
#include "PaceletApp/Scheduler/Scheduler.h"
#include "PaceletApp/Scheduler/WorkerPool.h"

#include <QObject>

#include <mutex>
#include <vector>

namespace pacelet {

/// Real time, on the event loop of the thread that makes it, and a pool of threads. While nothing
/// is due and no work is under way, no thread of it wakes up.
class RealScheduler final : public Scheduler {
public:
    /// `clock` tells the wall-clock time. Throws `std::system_error` where the system gives no
    /// thread.
    explicit RealScheduler(Clock& clock);

    /// Waits for the work that is under way.
    ~RealScheduler() override;

    MonotonicTime monotonicNow() override;

    /// Waits at most `limit` for the work that is under way, and tells whether all of it is done. A
    /// tool that hangs cannot be waited for: whoever gets false leaves the program at once.
    bool waitForBackground(Seconds limit);

private:
    void arm() override;
    void start(BackgroundJob& job) override;
    void jobDone(BackgroundJob& job) override;

    void runDue();
    void finishJobs();

    Alarm alarm_;
    QObject mailbox_; ///< in the event loop's thread: gets an event when `finished_` has something
    std::mutex finishedMutex_;
    std::vector<BackgroundJob*> finished_;
    WorkerPool pool_;
};

} // namespace pacelet
