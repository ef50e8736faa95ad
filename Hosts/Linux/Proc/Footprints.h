#pragma once

#include "Core/Platform/Clock.h"
#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/Proc/FolderReader.h"
#include "Hosts/Linux/Proc/ProcessMemory.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <unordered_map>

namespace pacelet::Linux {

/// What each process adds to the memory in use. The cheap counters of the kernel count a page with
/// everybody who has it, which makes a browser with many helpers half as large again as it is. How
/// the pages of a large process are shared is therefore sampled now and then, by a thread of its
/// own since the kernel goes through all of them for it; between two samples the cheap counters
/// tell what has changed. So that the first answer is true, too, whoever asks takes the first
/// samples on the spot, within narrow bounds: of some children of each parent, which tell what the
/// others have in common with it until their turn comes. Small processes count as the cheap
/// counters have them, without shared mappings. When the machine's shared memory has moved, the
/// same thread looks for files in memory that are held without being mapped. Safe from any thread.
class Footprints {
public:
    /// Tells the cheap counters of a process; nothing for what has gone or has no memory of its
    /// own.
    using Counters = std::function<std::optional<CountedMemory>(std::int32_t pid)>;

    /// Both must outlive it. Without `counters` it reads them itself.
    Footprints(const FolderReader& proc, Clock& clock, Counters counters = {});
    Footprints(const Footprints&) = delete;
    Footprints& operator=(const Footprints&) = delete;
    ~Footprints();

    /// In bytes; nothing for a process that has gone, may not be asked or has no memory of its own.
    /// A large process that was never sampled is so now or soon afterwards.
    std::optional<std::int64_t> of(std::int32_t pid);

    /// No process smaller than this is sampled.
    static constexpr std::int64_t largeBytes = 8 << 20;

private:
    struct Sample {
        Descriptor folder;      ///< of the process, which it names for good
        ProcessMemory then{};   ///< the cheap counters when it was taken
        std::int64_t bytes = 0; ///< its share of the pages at that time
        Seconds takenAt{};      ///< uptime
        Seconds cost{};         ///< processor time that it took
        Seconds lastAsked{};    ///< uptime
        std::int32_t parent = 0;
        bool isDoubtful = false; ///< a child turned up that has pages in common with it
    };

    using Samples = std::unordered_map<std::int32_t, Sample>;

    /// What a process has in files that nobody has mapped.
    struct Held {
        Descriptor folder; ///< of the process, which it names for good
        std::int64_t bytes = 0;
    };

    bool mayHoldMore(Seconds uptime);
    std::int64_t heldBy(std::int32_t pid);
    void lookForHeld();
    /// What was found of the children of one process.
    struct Siblings {
        int count = 0;
        std::int64_t excess = 0; ///< of the cheap counters over their shares, all together
    };

    Siblings siblings(std::int32_t parent) const;
    bool mayAfford(Seconds cost, Seconds uptime);
    static bool isDue(const Sample& sample, const ProcessMemory& now, Seconds uptime);
    void wish(std::int32_t pid, std::int64_t bytes);
    void wakeWorker();
    void work();
    Samples::iterator keep(std::int32_t pid, Sample sample);
    std::optional<Sample> take(std::int32_t pid) const;
    void forgetUnasked();

    const FolderReader& proc_;
    Clock& clock_;
    Counters counters_;
    std::mutex mutex_;
    std::condition_variable changed_;
    Samples samples_;
    std::unordered_map<std::int32_t, std::int64_t> wishes_; ///< sizes of those to be sampled
    std::unordered_map<std::int32_t, Held> held_;
    std::int64_t sharedThen_ = 0; ///< of the machine, when it was last looked who holds it
    Seconds heldLookAt_{};        ///< uptime of that
    Seconds heldCost_{};          ///< processor time that it took
    Seconds sharedReadAt_{};      ///< uptime
    bool mustLookForHeld_ = false;
    Seconds allowance_;   ///< processor time that those who ask may still spend on samples
    Seconds allowedAt_{}; ///< uptime when it was last granted
    bool isEnding_ = false;
    std::thread worker_; ///< from the first wish on
};

} // namespace pacelet::Linux
