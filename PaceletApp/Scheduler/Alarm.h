#pragma once

#include "Core/Support/Time.h"

#include <functional>
#include <optional>

#ifdef __linux__
#include "Core/Support/Descriptor.h"

#include <QSocketNotifier>
#else
#include <QTimer>
#endif

namespace pacelet {

/// Tells that a point in time has come, on the event loop of the thread that makes it. While none
/// is set, or none is due, nothing wakes up.
///
/// The time counts on while the machine sleeps. On Linux, what fell due in between is told on
/// waking. Elsewhere a wait goes on where sleep interrupted it, so that it may be told late, by as
/// much as was left of it.
class Alarm {
public:
    explicit Alarm(std::function<void()> due);

    static MonotonicTime now();

    /// Tells once, at `due` or a trifle later; what was set before no longer counts. Without a time
    /// it stays silent. A time that is far off may be told early.
    void set(std::optional<MonotonicTime> due);

private:
#ifdef __linux__
    Descriptor timer_;
    QSocketNotifier notifier_;
#else
    QTimer timer_;
#endif
};

} // namespace pacelet
