#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace pacelet::Linux {

struct KnownProcess;
using KnownProcessMap = std::unordered_map<std::int32_t, KnownProcess>;

/// The processor time that counts with one process, in hundredths of a second.
struct CPUAccount {
    bool isMet = false;        ///< looked at before
    std::int64_t own = 0;      ///< used by the process itself
    std::int64_t reaped = 0;   ///< used by children that it has waited for, as the kernel tells it
    std::int64_t credited = 0; ///< of `reaped`: what nobody else was ever shown to use
    std::int64_t fresh = 0;    ///< of `reaped`: come in since the last look, and not divided up yet
    std::optional<std::int64_t> shown{}; ///< `counted` in the last table that was shown

    /// Takes down what the kernel tells. The children of a newborn, that is one which started after
    /// the last look, worked after it as well; those that an older one has reaped before it was
    /// first met are long past.
    void look(std::int64_t ownNow, std::int64_t reapedNow, bool isNewborn);

    /// Credits what is still fresh once all debts are paid, but never more than `most`.
    void credit(std::int64_t most);

    std::int64_t counted() const { return own + credited; }
};

/// Counts the time of processes that come and go between two looks with the parent that waits for
/// them, as the kernel does once they have ended. What a child was itself shown to use until it
/// ended is a debt of whoever waited for it, so that nothing counts twice. Who that was is not
/// told: the parent, or if it went away too, one of its ancestors.
class ReapedTime {
public:
    /// `process` was there at the last look and is not any more: to be told of all such before they
    /// are forgotten. `sweep` is the number of this look.
    void addEnded(const KnownProcess& process, const KnownProcessMap& processes,
                  std::uint64_t sweep);

    /// Pays the debts out of what came in with this look.
    void settle(KnownProcessMap& processes);

private:
    struct Debt {
        std::int32_t pid;        ///< of the nearest ancestor
        std::uint64_t startTime; ///< of the same
        std::int64_t amount;
        bool isOld; ///< it stood already at the last look
    };

    std::vector<Debt> debts_;
};

} // namespace pacelet::Linux
