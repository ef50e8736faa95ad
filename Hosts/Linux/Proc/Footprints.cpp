#include "Hosts/Linux/Proc/Footprints.h"

#include "Hosts/Linux/Proc/HeldMemory.h"
#include "Hosts/Linux/Proc/KeyedFigures.h"
#include "Hosts/Linux/Proc/MemoryInfo.h"
#include "Hosts/Linux/Proc/ProcPath.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <utility>

namespace pacelet::Linux {

namespace {

/// Each keeps a folder open.
constexpr std::size_t mostSamples = 256;

/// How pages are shared changes slowly; what a process takes and gives back the counters tell.
constexpr Seconds usualAge{300};
constexpr Seconds leastAge{3}; ///< of a process whose sample is out of date
constexpr std::int64_t leastMove = 16 << 20;

/// The worker rests so many times as long as a sample took; longer until the next of the same.
constexpr double restAfterSample = 4;
constexpr double restBetweenSamplesOfOne = 200;
constexpr double restBetweenLooksForHeld = 2000; ///< they go through every process

/// What those who ask may spend on samples: at once, and of the time that passes.
constexpr Seconds mostAtOnce{0.12};
constexpr double shareOfTime = 0.01;
constexpr int enoughSiblings = 6;        ///< to tell of the others
constexpr double sampledPerSecond = 4e9; ///< bytes in pages that the kernel goes through, about

/// Longer than the longest time between two ticks.
constexpr Seconds unaskedAge{150};

std::optional<std::string_view> readIn(const Descriptor& folder, const char* name,
                                       ReadBuffer& buffer) {
    const Descriptor file{::openat(folder.get(), name, O_RDONLY | O_CLOEXEC)};
    return file ? readWhole(file, buffer) : std::nullopt;
}

Seconds threadTime() {
    timespec time{};
    // Cannot fail: the clock is known and the record is ours.
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
}

} // namespace

Footprints::Footprints(const FolderReader& proc, Clock& clock, Counters counters)
    : proc_{proc},
      clock_{clock},
      counters_{std::move(counters)},
      allowance_{mostAtOnce} {}

Footprints::~Footprints() {
    {
        const std::lock_guard lock{mutex_};
        isEnding_ = true;
    }
    changed_.notify_all();
    if (worker_.joinable()) {
        worker_.join();
    }
}

std::optional<std::int64_t> Footprints::of(std::int32_t pid) {
    thread_local ReadBuffer buffer;
    const auto counted = counters_ ? counters_(pid) : readCountedMemory(proc_, pid, buffer);
    if (!counted) {
        return std::nullopt;
    }
    const ProcessMemory* const now = &counted->memory;
    const std::int64_t alone = now->anonymous + now->swapped;
    const Seconds uptime = clock_.monotonicNow().time_since_epoch();
    std::unique_lock lock{mutex_};
    if (mayHoldMore(uptime)) {
        mustLookForHeld_ = true;
        wakeWorker();
    }
    const std::int64_t held = heldBy(pid);
    auto found = samples_.find(pid);
    if (found == samples_.end() && now->total() >= largeBytes) {
        const Seconds likelyCost{static_cast<double>(now->total()) / sampledPerSecond};
        const Siblings known = siblings(counted->parent);
        if (known.count < enoughSiblings && mayAfford(likelyCost, uptime)) {
            lock.unlock();
            auto sample = take(pid);
            lock.lock();
            if (sample) {
                allowance_ += likelyCost - sample->cost;
                found = keep(pid, *std::move(sample));
            } else {
                found = samples_.find(pid);
            }
        } else {
            wish(pid, now->total());
            if (known.count > 0) {
                return std::max<std::int64_t>(0, now->total() - known.excess / known.count) + held;
            }
        }
    }
    if (found == samples_.end()) {
        return alone + held;
    }
    Sample& sample = found->second;
    sample.lastAsked = uptime;
    // The folder belongs to the process that was sampled, whoever has its number now.
    if (::faccessat(sample.folder.get(), "status", F_OK, 0) != 0) {
        samples_.erase(found);
        return alone + held;
    }
    if (isDue(sample, *now, uptime)) {
        wish(pid, now->total());
    }
    return std::max<std::int64_t>(0, sample.bytes + now->total() - sample.then.total()) + held;
}

bool Footprints::mayHoldMore(Seconds uptime) {
    if (sharedReadAt_ > Seconds::zero() && uptime - sharedReadAt_ < leastAge) {
        return false;
    }
    sharedReadAt_ = uptime;
    thread_local ReadBuffer buffer;
    const auto text = proc_.read("meminfo", buffer);
    const std::int64_t shared = text ? parseMemoryInfo(*text).shared.value_or(0) : 0;
    const Seconds age = uptime - heldLookAt_;
    const bool hasMoved = std::abs(shared - sharedThen_) >= leastMove;
    const bool isOld = age >= usualAge && shared >= largeBytes;
    if (!(hasMoved || isOld) || age < heldCost_ * restBetweenLooksForHeld) {
        return false;
    }
    sharedThen_ = shared;
    heldLookAt_ = uptime;
    return true;
}

std::int64_t Footprints::heldBy(std::int32_t pid) {
    const auto found = held_.find(pid);
    if (found == held_.end()) {
        return 0;
    }
    if (::faccessat(found->second.folder.get(), "status", F_OK, 0) != 0) {
        held_.erase(found);
        return 0;
    }
    return found->second.bytes;
}

void Footprints::lookForHeld() {
    const Seconds begin = threadTime();
    std::unordered_map<std::int32_t, Held> held;
    for (const auto& [pid, bytes] : readHeldMemory(proc_, largeBytes)) {
        held.insert_or_assign(pid,
                              Held{proc_.open(ProcPath{pid}.text(), O_PATH | O_DIRECTORY), bytes});
    }
    const Seconds cost = threadTime() - begin;
    const std::lock_guard lock{mutex_};
    held_ = std::move(held);
    heldCost_ = cost;
}

Footprints::Siblings Footprints::siblings(std::int32_t parent) const {
    Siblings all;
    if (!samples_.contains(parent)) {
        return all; // a small one, as the one that starts the session's programs, shares little
    }
    for (const auto& [pid, sample] : samples_) {
        if (sample.parent == parent) {
            ++all.count;
            all.excess += sample.then.total() - sample.bytes;
        }
    }
    return all;
}

/// Takes the cost off the allowance if there is enough of it.
bool Footprints::mayAfford(Seconds cost, Seconds uptime) {
    allowance_ = std::min(mostAtOnce, allowance_ + (uptime - allowedAt_) * shareOfTime);
    allowedAt_ = uptime;
    if (cost > allowance_ || samples_.size() + wishes_.size() >= mostSamples) {
        return false;
    }
    allowance_ -= cost;
    return true;
}

bool Footprints::isDue(const Sample& sample, const ProcessMemory& now, Seconds uptime) {
    const Seconds age = uptime - sample.takenAt;
    const Seconds rest = sample.cost * restBetweenSamplesOfOne;
    const std::int64_t move = std::abs(now.total() - sample.then.total());
    const bool isOutOfDate =
        sample.isDoubtful || move >= std::max(leastMove, sample.then.total() / 4);
    return age >= std::max(isOutOfDate ? leastAge : usualAge, rest);
}

void Footprints::wish(std::int32_t pid, std::int64_t bytes) {
    if (samples_.size() + wishes_.size() >= mostSamples && !samples_.contains(pid)) {
        return;
    }
    wishes_.insert_or_assign(pid, bytes);
    wakeWorker();
}

void Footprints::wakeWorker() {
    if (!worker_.joinable()) {
        worker_ = std::thread{[this] { work(); }};
    }
    changed_.notify_one();
}

void Footprints::work() {
    std::unique_lock lock{mutex_};
    while (true) {
        changed_.wait(lock, [this] { return isEnding_ || mustLookForHeld_ || !wishes_.empty(); });
        if (isEnding_) {
            return;
        }
        // Who is sampled first is right first; who holds memory unmapped is rare.
        if (wishes_.empty()) {
            mustLookForHeld_ = false;
            lock.unlock();
            lookForHeld();
            lock.lock();
            continue;
        }
        const auto largest = std::ranges::max_element(
            wishes_, {}, &std::pair<const std::int32_t, std::int64_t>::second);
        const std::int32_t pid = largest->first;
        wishes_.erase(largest);
        lock.unlock();
        auto sample = take(pid);
        const Seconds rest = sample ? sample->cost * restAfterSample : Seconds::zero();
        lock.lock();
        if (sample) {
            keep(pid, *std::move(sample));
        }
        forgetUnasked();
        changed_.wait_for(lock, rest, [this] { return isEnding_; });
    }
}

Footprints::Samples::iterator Footprints::keep(std::int32_t pid, Sample sample) {
    const bool isFirst = !samples_.contains(pid);
    const bool hasInCommon = sample.bytes < sample.then.total() - sample.then.total() / 8;
    const auto parent = samples_.find(sample.parent);
    if (isFirst && hasInCommon && parent != samples_.end()) {
        parent->second.isDoubtful = true;
    }
    return samples_.insert_or_assign(pid, std::move(sample)).first;
}

std::optional<Footprints::Sample> Footprints::take(std::int32_t pid) const {
    const Seconds begin = threadTime();
    ReadBuffer buffer;
    Sample sample;
    sample.folder = proc_.open(ProcPath{pid}.text(), O_PATH | O_DIRECTORY);
    const auto status = readIn(sample.folder, "status", buffer);
    const auto then = status ? parseCountedMemory(*status) : std::nullopt;
    if (!then) {
        return std::nullopt;
    }
    sample.then = then->memory;
    sample.parent = then->parent;
    const auto rollup = readIn(sample.folder, "smaps_rollup", buffer);
    const auto part = rollup ? parseSharedOut(*rollup) : std::nullopt;
    // Some programs let nobody look into them. They count as small ones do.
    sample.bytes = part ? part->total() : then->memory.anonymous + then->memory.swapped;
    sample.takenAt = sample.lastAsked = clock_.monotonicNow().time_since_epoch();
    sample.cost = threadTime() - begin;
    return sample;
}

void Footprints::forgetUnasked() {
    const Seconds uptime = clock_.monotonicNow().time_since_epoch();
    std::erase_if(samples_,
                  [&](const auto& entry) { return uptime - entry.second.lastAsked > unaskedAge; });
}

} // namespace pacelet::Linux
