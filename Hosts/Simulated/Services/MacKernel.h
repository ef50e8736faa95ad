#pragma once

#include "Core/Platform/Kernel.h"
#include "Hosts/Simulated/Machine.h"

namespace pacelet::Simulated {

class MacKernel : public Kernel {
public:
    explicit MacKernel(Machine& machine)
        : machine_{machine} {}

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
    std::uint32_t getuid() override { return ann.uid; }

private:
    Machine& machine_;
};

} // namespace pacelet::Simulated
