#pragma once

#include "Core/Platform/Kernel.h"

namespace pacelet::Mac {

/// The Mac's own calls.
class MacKernel final : public Kernel {
public:
    std::optional<std::size_t> sysctlbyname(std::string_view name,
                                            std::span<std::byte> record) override;
    std::optional<VMStatistics64> hostStatistics64() override;
    std::int64_t pageSize() override;
    std::optional<std::int64_t> physFootprint(std::int32_t pid) override;
    std::int64_t activeProcessorCount() override;
    std::int64_t physicalMemory() override;
    std::optional<std::int64_t> availableMemory() override { return std::nullopt; }
    int thermalState() override;
    Seconds systemUptime() override;
    bool isLowPowerModeEnabled() override;
    std::optional<VolumeCapacities> volumeCapacities(const std::string& path) override;
    std::uint32_t getuid() override;
};

} // namespace pacelet::Mac
