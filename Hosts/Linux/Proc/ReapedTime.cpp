#include "Hosts/Linux/Proc/ReapedTime.h"

#include "Hosts/Linux/Proc/KnownProcesses.h"

#include <algorithm>
#include <utility>

namespace pacelet::Linux {

namespace {

/// No family is deeper; a circle, which pids that were used again could make, ends here too.
constexpr int mostAncestors = 64;

/// Calls `visit` for the process with this number and its ancestors until it answers false.
template<typename Map, typename Visitor>
void forEachAncestor(Map& processes, std::int32_t pid, Visitor&& visit) {
    for (int step = 0; step < mostAncestors; ++step) {
        const auto found = processes.find(pid);
        if (found == processes.end() || !visit(found->first, found->second)) {
            return;
        }
        pid = found->second.ppid;
    }
}

} // namespace

void CPUAccount::look(std::int64_t ownNow, std::int64_t reapedNow, bool isNewborn) {
    const std::int64_t before = isMet ? reaped : isNewborn ? 0 : reapedNow;
    isMet = true;
    own = ownNow;
    reaped = reapedNow;
    fresh = std::max<std::int64_t>(0, reapedNow - before);
}

void CPUAccount::credit(std::int64_t most) {
    credited += std::min(std::exchange(fresh, 0), most);
}

void ReapedTime::addEnded(const KnownProcess& process, const KnownProcessMap& processes,
                          std::uint64_t sweep) {
    const std::int64_t amount = process.cpu.own + process.cpu.reaped;
    if (amount == 0) {
        return;
    }
    forEachAncestor(processes, process.ppid, [&](std::int32_t pid, const KnownProcess& ancestor) {
        const bool isThere = ancestor.sweep == sweep;
        if (isThere) {
            debts_.push_back({pid, ancestor.startTime, amount, false});
        }
        return !isThere;
    });
}

void ReapedTime::settle(KnownProcessMap& processes) {
    for (Debt& debt : debts_) {
        const auto nearest = processes.find(debt.pid);
        if (nearest == processes.end() || nearest->second.startTime != debt.startTime) {
            debt.isOld = true;
            continue;
        }
        forEachAncestor(processes, debt.pid, [&](std::int32_t, KnownProcess& ancestor) {
            const std::int64_t paid = std::min(debt.amount, ancestor.cpu.fresh);
            ancestor.cpu.fresh -= paid;
            debt.amount -= paid;
            return debt.amount > 0;
        });
    }
    // A parent may have been looked at just before it waited for the child: it pays next time. A
    // child that nobody waits for leaves a debt that is never paid.
    std::erase_if(debts_, [](Debt& debt) {
        const bool isOver = debt.isOld || debt.amount == 0;
        debt.isOld = true;
        return isOver;
    });
}

} // namespace pacelet::Linux
