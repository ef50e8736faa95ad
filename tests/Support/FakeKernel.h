#pragma once

#include "Core/Platform/Clock.h"
#include "Core/Platform/Kernel.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace pacelet::testing {

/// A kernel that answers what its fields hold; without an entry a call fails.
class FakeKernel : public Kernel {
public:
    template<typename Record>
    void set(const std::string& name, const Record& record) {
        const auto bytes = std::as_bytes(std::span{&record, std::size_t{1}});
        records[name] = {bytes.begin(), bytes.end()};
    }

    std::optional<std::size_t> sysctlbyname(std::string_view name,
                                            std::span<std::byte> record) override {
        const auto found = records.find(std::string{name});
        if (found == records.end() || found->second.size() > record.size()) {
            return std::nullopt;
        }
        std::ranges::copy(found->second, record.begin());
        return found->second.size();
    }
    std::optional<VMStatistics64> hostStatistics64() override { return statistics; }
    std::int64_t pageSize() override { return 16384; }
    std::optional<std::int64_t> physFootprint(std::int32_t pid) override {
        footprintCalls.push_back(pid);
        const auto found = footprints.find(pid);
        return found == footprints.end() ? std::nullopt : std::optional{found->second};
    }
    std::int64_t activeProcessorCount() override { return cores; }
    std::int64_t physicalMemory() override { return memory; }
    std::optional<std::int64_t> availableMemory() override { return std::nullopt; }
    int thermalState() override { return thermal; }
    Seconds systemUptime() override { return Seconds{uptime}; }
    bool isLowPowerModeEnabled() override { return lowPower; }
    std::optional<VolumeCapacities> volumeCapacities(const std::string&) override {
        return capacities;
    }
    std::uint32_t getuid() override { return 501; }

    std::map<std::string, std::vector<std::byte>> records;
    std::optional<VMStatistics64> statistics;
    std::map<std::int32_t, std::int64_t> footprints;
    std::vector<std::int32_t> footprintCalls;
    std::int64_t cores = 8;
    std::int64_t memory = std::int64_t{16} << 30;
    int thermal = 0;
    double uptime = 0;
    bool lowPower = false;
    std::optional<VolumeCapacities> capacities;
};

/// A clock that stands still until it is set.
class FakeClock : public Clock {
public:
    TimePoint now() override { return wall; }
    MonotonicTime monotonicNow() override { return monotonic; }

    TimePoint wall = fromUnixTime(1'800'000'000);
    MonotonicTime monotonic{};
};

} // namespace pacelet::testing
