#pragma once

#include "Core/Platform/Platform.h"
#include "Hosts/Recorded/Tape.h"

namespace pacelet::Recorded {

// The services of a machine behind a tape. Each asks the machine while it is recorded, and is null
// there while it is replayed.

class TapedTools : public ToolRunner {
public:
    TapedTools(Tape& tape, ToolRunner* live, Disguise* disguise)
        : tape_{tape},
          live_{live},
          disguise_{disguise} {}

    Shell::Output run(const std::string& executable,
                      const std::vector<std::string>& arguments) override;

private:
    Tape& tape_;
    ToolRunner* live_;
    Disguise* disguise_;
};

class TapedKernel : public Kernel {
public:
    TapedKernel(Tape& tape, Kernel* live, Disguise* disguise)
        : tape_{tape},
          live_{live},
          disguise_{disguise} {}

    std::optional<std::size_t> sysctlbyname(std::string_view name,
                                            std::span<std::byte> record) override;
    std::optional<VMStatistics64> hostStatistics64() override;
    std::int64_t pageSize() override;
    std::optional<std::int64_t> physFootprint(std::int32_t pid) override;
    std::int64_t activeProcessorCount() override;
    std::int64_t physicalMemory() override;
    std::optional<std::int64_t> availableMemory() override;
    int thermalState() override;
    Seconds systemUptime() override;
    bool isLowPowerModeEnabled() override;
    std::optional<VolumeCapacities> volumeCapacities(const std::string& path) override;
    std::uint32_t getuid() override;

private:
    Tape& tape_;
    Kernel* live_;
    Disguise* disguise_;
};

} // namespace pacelet::Recorded
