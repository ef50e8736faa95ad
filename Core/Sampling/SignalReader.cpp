#include "Core/Sampling/SignalReader.h"

namespace pacelet::SignalReader {

namespace {

constexpr std::int32_t normalPressureLevel = 1;

double uptime(Kernel& kernel, Clock& clock) {
    if (const auto boot = readSysctl<BootTimeRecord>(kernel, "kern.boottime")) {
        return unixTime(clock.now()) - static_cast<double>(boot->tv_sec);
    }
    return kernel.systemUptime().count();
}

} // namespace

SystemSignals read(Kernel& kernel, Clock& clock, double totalCPUPercent) {
    SystemSignals signals;
    signals.coreCount = kernel.activeProcessorCount();
    signals.pressure = pressureFromSysctlLevel(
        readSysctl<std::int32_t>(kernel, "kern.memorystatus_vm_pressure_level")
            .value_or(normalPressureLevel));
    const auto swap = readSysctl<SwapUsageRecord>(kernel, "vm.swapusage");
    signals.swapUsedBytes = swap ? static_cast<std::int64_t>(swap->xsu_used) : 0;
    signals.uptime = uptime(kernel, clock);
    if (const auto capacities = kernel.volumeCapacities("/")) {
        signals.diskFreeBytes = capacities->availableForImportantUsage.value_or(0);
        signals.diskTotalBytes = capacities->total.value_or(0);
    }
    signals.thermal = thermalFromState(kernel.thermalState());
    signals.memoryTotalBytes = kernel.physicalMemory();
    signals.memoryAvailableBytes = kernel.availableMemory();
    signals.cpuLoadPercent = SystemSignals::cpuLoad(totalCPUPercent, signals.coreCount);
    return signals;
}

} // namespace pacelet::SignalReader
