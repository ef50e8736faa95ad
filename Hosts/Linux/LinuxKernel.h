#pragma once

#include "Core/Platform/Clock.h"
#include "Core/Platform/Kernel.h"
#include "Hosts/Linux/Proc/FolderReader.h"
#include "Hosts/Linux/Proc/Footprints.h"
#include "Hosts/Linux/ThermalZones.h"

#include <string>

namespace pacelet::Linux {

/// The readings of a Linux machine in the shapes of the Mac's kernel. What a machine does not tell
/// (pressure in a small kernel, heat in a container) is absent.
class LinuxKernel final : public Kernel {
public:
    /// The folders are "/proc", "/sys" and "/run" but in tests. `clock` counts from boot.
    LinuxKernel(const std::string& procFolder, const std::string& sysFolder,
                const std::string& runFolder, Clock& clock, Footprints::Counters counters = {});

    std::optional<std::size_t> sysctlbyname(std::string_view name,
                                            std::span<std::byte> record) override;
    std::optional<VMStatistics64> hostStatistics64() override;
    std::int64_t pageSize() override;
    std::optional<std::int64_t> physFootprint(std::int32_t pid) override;
    std::int64_t activeProcessorCount() override;
    std::int64_t physicalMemory() override;
    std::optional<std::int64_t> availableMemory() override;
    int thermalState() override { return thermalZones_.state(); }
    Seconds systemUptime() override;
    bool isLowPowerModeEnabled() override;
    std::optional<VolumeCapacities> volumeCapacities(const std::string& path) override;
    std::uint32_t getuid() override;

private:
    FolderReader proc_;
    FolderReader sys_;
    FolderReader run_;
    ThermalZones thermalZones_;
    Clock& clock_;
    Footprints footprints_;
};

} // namespace pacelet::Linux
