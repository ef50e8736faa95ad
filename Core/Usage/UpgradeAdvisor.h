#pragma once

#include "Core/Usage/MinuteRecord.h"

#include <array>
#include <cstdint>
#include <variant>
#include <vector>

namespace pacelet {

/// More memory is advised.
struct MemoryBottleneck {
    std::int64_t recommendedGB = 0; ///< binary GB
    double pressureShare = 0;       ///< share of the minutes under memory pressure

    bool operator==(const MemoryBottleneck&) const = default;
};

/// The processor is busy too often.
struct CPUBottleneck {
    double busyShare = 0; ///< share of the minutes with a busy processor

    bool operator==(const CPUBottleneck&) const = default;
};

/// The start-up disk is nearly full.
struct StorageBottleneck {
    double freeShare = 0; ///< share of the disk that is free

    bool operator==(const StorageBottleneck&) const = default;
};

using Bottleneck = std::variant<MemoryBottleneck, CPUBottleneck, StorageBottleneck>;

struct NotEnoughData {
    std::int64_t hoursMeasured = 0;

    bool operator==(const NotEnoughData&) const = default;
};

/// A better machine would not help.
struct Healthy {
    std::int64_t hoursMeasured = 0;

    bool operator==(const Healthy&) const = default;
};

struct Bottlenecks {
    std::vector<Bottleneck> list; ///< never empty; in the order memory, processor, storage
    std::int64_t hoursMeasured = 0;

    bool operator==(const Bottlenecks&) const = default;
};

using UpgradeVerdict = std::variant<NotEnoughData, Healthy, Bottlenecks>;

/// The measured minutes behind a verdict, in whole hours.
std::int64_t hoursMeasured(const UpgradeVerdict& verdict);

/// Tells from what was measured whether a better machine would help.
namespace UpgradeAdvisor {

/// The sizes that memory is sold in, in binary GB, ascending.
inline constexpr std::array<std::int64_t, 10> memorySteps{16, 24, 32,  36,  48,
                                                          64, 96, 128, 192, 256};

/// Twice the present size, rounded up to one that is sold, or the largest one. In binary GB.
std::int64_t recommendedMemoryGB(std::int64_t current);

/// The verdict on the records of about a week. `memoryBytes` is what is installed, `diskFreeShare`
/// the free share of the start-up disk, or 1 when it is not known.
UpgradeVerdict evaluate(const std::vector<MinuteRecord>& records, std::int64_t memoryBytes,
                        double diskFreeShare);

} // namespace UpgradeAdvisor

} // namespace pacelet
