#include "Hosts/Linux/LinuxKernel.h"

#include "Core/Support/Text.h"
#include "Hosts/Linux/Hardware/InstalledMemory.h"
#include "Hosts/Linux/Proc/MemoryInfo.h"
#include "Hosts/Linux/Proc/PressureStall.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>

namespace pacelet::Linux {

namespace {

using Record = std::span<std::byte>;

std::optional<std::size_t> fill(Record record, const void* value, std::size_t size) {
    if (size > record.size()) {
        return std::nullopt;
    }
    std::memcpy(record.data(), value, size);
    return size;
}

template<typename Value>
std::optional<std::size_t> fill(Record record, const std::optional<Value>& value) {
    return value ? fill(record, &*value, sizeof(Value)) : std::nullopt;
}

/// A file's whole text; empty when it is not there.
std::string readText(const FolderReader& folder, const char* path) {
    ReadBuffer buffer;
    return std::string{folder.read(path, buffer).value_or("")};
}

std::int64_t installed(const MemoryInfo& info, const FolderReader& run) {
    return installedMemory(info.total.value_or(0), readText(run, firmwareRecordPath));
}

std::optional<BootTimeRecord> bootTime(const FolderReader& proc) {
    constexpr std::string_view key = "btime ";
    std::optional<BootTimeRecord> record;
    forEachLine(readText(proc, "stat"), [&](std::string_view line) {
        if (!record && line.starts_with(key)) {
            if (const auto seconds = parseInteger<std::int64_t>(line.substr(key.size()))) {
                record = BootTimeRecord{*seconds, 0};
            }
        }
    });
    return record;
}

/// The model as the firmware tells it, on a PC and on a board.
std::string model(const FolderReader& sys) {
    for (const char* file : {"class/dmi/id/product_name", "firmware/devicetree/base/model"}) {
        const std::string text = readText(sys, file);
        if (const std::string_view name = trimmed(std::string_view{text.c_str()}); !name.empty()) {
            return std::string{name};
        }
    }
    return {};
}

std::optional<std::size_t> readPressure(const FolderReader& proc, const FolderReader&,
                                        Record record) {
    const MemoryInfo info = parseMemoryInfo(readText(proc, "meminfo"));
    return fill(record, pressureLevel(parsePressureStall(readText(proc, "pressure/memory")),
                                      availableShare(info)));
}

std::optional<std::size_t> readSwap(const FolderReader& proc, const FolderReader&, Record record) {
    return fill(record, swapUsage(parseMemoryInfo(readText(proc, "meminfo")), ::getpagesize()));
}

std::optional<std::size_t> readBootTime(const FolderReader& proc, const FolderReader&,
                                        Record record) {
    return fill(record, bootTime(proc));
}

std::optional<std::size_t> readSystemName(const FolderReader&, const FolderReader&, Record record) {
    constexpr std::string_view name{"Linux\0", 6};
    return fill(record, name.data(), name.size());
}

std::optional<std::size_t> readModel(const FolderReader&, const FolderReader& sys, Record record) {
    const std::string name = model(sys);
    return name.empty() ? std::nullopt : fill(record, name.c_str(), name.size() + 1);
}

struct Sysctl {
    std::string_view name;
    std::optional<std::size_t> (*read)(const FolderReader& proc, const FolderReader& sys,
                                       Record record);
};

constexpr std::array sysctls{
    Sysctl{"kern.memorystatus_vm_pressure_level", readPressure},
    Sysctl{"vm.swapusage", readSwap},
    Sysctl{"kern.boottime", readBootTime},
    Sysctl{"kern.ostype", readSystemName},
    Sysctl{"hw.model", readModel},
};

} // namespace

LinuxKernel::LinuxKernel(const std::string& procFolder, const std::string& sysFolder,
                         const std::string& runFolder, Clock& clock, Footprints::Counters counters)
    : proc_{procFolder},
      sys_{sysFolder},
      run_{runFolder},
      thermalZones_{sysFolder + "/class/thermal"},
      clock_{clock},
      footprints_{proc_, clock, std::move(counters)} {}

std::optional<std::size_t> LinuxKernel::sysctlbyname(std::string_view name,
                                                     std::span<std::byte> record) {
    for (const Sysctl& sysctl : sysctls) {
        if (sysctl.name == name) {
            return sysctl.read(proc_, sys_, record);
        }
    }
    return std::nullopt;
}

std::optional<VMStatistics64> LinuxKernel::hostStatistics64() {
    const MemoryInfo info = parseMemoryInfo(readText(proc_, "meminfo"));
    return memoryStatistics(info, pageSize(), installed(info, run_));
}

std::int64_t LinuxKernel::pageSize() {
    return ::getpagesize();
}

std::optional<std::int64_t> LinuxKernel::physFootprint(std::int32_t pid) {
    return footprints_.of(pid);
}

std::int64_t LinuxKernel::activeProcessorCount() {
    // All that are switched on, not only those that this program may use: the process table, too,
    // is that of the whole machine.
    return std::max(1L, ::sysconf(_SC_NPROCESSORS_ONLN));
}

std::int64_t LinuxKernel::physicalMemory() {
    return installed(parseMemoryInfo(readText(proc_, "meminfo")), run_);
}

std::optional<std::int64_t> LinuxKernel::availableMemory() {
    return parseMemoryInfo(readText(proc_, "meminfo")).available;
}

Seconds LinuxKernel::systemUptime() {
    return clock_.monotonicNow().time_since_epoch();
}

bool LinuxKernel::isLowPowerModeEnabled() {
    // The firmware's profile where it has one; else the processor's own hint, which the same switch
    // of the desktop sets.
    return trimmed(readText(sys_, "firmware/acpi/platform_profile")) == "low-power" ||
           trimmed(readText(sys_,
                            "devices/system/cpu/cpufreq/policy0/energy_performance_preference")) ==
               "power";
}

std::optional<VolumeCapacities> LinuxKernel::volumeCapacities(const std::string& path) {
    struct statvfs facts {};
    if (::statvfs(path.c_str(), &facts) != 0) {
        return std::nullopt;
    }
    const auto bytes = [&](fsblkcnt_t blocks) -> std::optional<std::int64_t> {
        std::int64_t size = 0;
        return __builtin_mul_overflow(blocks, facts.f_frsize, &size) ? std::nullopt
                                                                     : std::optional{size};
    };
    // What an ordinary user may fill, without the part that is set aside for root.
    return VolumeCapacities{bytes(facts.f_bavail), bytes(facts.f_blocks)};
}

std::uint32_t LinuxKernel::getuid() {
    return ::getuid();
}

} // namespace pacelet::Linux
