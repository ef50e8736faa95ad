#include "Hosts/Linux/Desktop/ProcessHandle.h"

#include "Hosts/Linux/Proc/ProcPath.h"
#include "Hosts/Linux/Proc/ProcStat.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace pacelet::Linux {

ProcessHandle::ProcessHandle(std::shared_ptr<const FolderReader> proc,
                             const ProcessIdentity& identity)
    : proc_{std::move(proc)},
      identity_{identity},
      process_{static_cast<int>(::syscall(SYS_pidfd_open, identity.pid, 0))} {
    // From here on the handle is bound to whatever has the pid: is it still the one that was meant?
    if (process_ && !isStillThere()) {
        process_.reset();
    }
}

bool ProcessHandle::isStillThere() const {
    ReadBuffer buffer;
    const auto text = proc_->read(ProcPath{identity_.pid, "stat"}.text(), buffer);
    const auto stat = text ? parseProcStat(*text) : std::nullopt;
    return stat && stat->startTime == identity_.startTime && !stat->hasEnded();
}

bool ProcessHandle::hasEnded() const {
    if (!process_) {
        return !isStillThere();
    }
    pollfd ended{process_.get(), POLLIN, 0};
    return ::poll(&ended, 1, 0) > 0;
}

bool ProcessHandle::signal(int number) const {
    return process_ && ::syscall(SYS_pidfd_send_signal, process_.get(), number, nullptr, 0) == 0;
}

} // namespace pacelet::Linux
