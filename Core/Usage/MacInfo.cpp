#include "Core/Usage/MacInfo.h"

#include "Core/Support/JsonDocument.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <array>

namespace pacelet {

namespace {

using simdjson::dom::object;

std::optional<std::string> text(object fields, std::string_view key) {
    std::string_view value;
    if (fields.at_key(key).get(value) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    return std::string{value};
}

/// The description of the machine: the first object of the one list in the report.
std::optional<object> hardware(simdjson::dom::element report) {
    simdjson::dom::array list;
    if (report.at_key("SPHardwareDataType").get(list) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    // A list with anything but objects in it is no such list.
    std::optional<object> first;
    for (const simdjson::dom::element item : list) {
        object fields;
        if (item.get(fields) != simdjson::SUCCESS) {
            return std::nullopt;
        }
        first = first ? first : fields;
    }
    return first;
}

/// The text under `name`, up to its NUL; empty when the kernel has none or it is too long.
std::string kernelText(Kernel& kernel, std::string_view name) {
    std::array<char, 64> buffer{};
    const auto size = kernel.sysctlbyname(name, std::as_writable_bytes(std::span{buffer}));
    const std::string_view value{buffer.data(), std::min(size.value_or(0), buffer.size())};
    return repairedUTF8(std::string{value.substr(0, value.find('\0'))});
}

bool runsOnAMac(Kernel& kernel) {
    const std::string system = kernelText(kernel, "kern.ostype");
    return system.empty() || system == "Darwin";
}

MacInfo fromKernel(Kernel& kernel) {
    const bool isAppleSilicon =
        readSysctl<std::int32_t>(kernel, "hw.optional.arm64").value_or(0) == 1;
    return {kernelText(kernel, "hw.model"), isAppleSilicon ? "Apple silicon" : "Intel",
            kernel.physicalMemory(), isAppleSilicon, runsOnAMac(kernel)};
}

} // namespace

MacInfo MacInfo::read(ToolRunner& tools, Kernel& kernel) {
    try {
        const Shell::Output output =
            tools.run("/usr/sbin/system_profiler", {"SPHardwareDataType", "-json"});
        if (auto info = parse(output.stdout, kernel.physicalMemory())) {
            info->isMac = runsOnAMac(kernel);
            return *std::move(info);
        }
    } catch (const LaunchError&) {
        // Without the tool, the kernel tells less but enough.
    }
    return fromKernel(kernel);
}

std::optional<MacInfo> MacInfo::parse(std::string_view systemProfilerJSON,
                                      std::int64_t physicalMemory) {
    simdjson::dom::parser parser;
    simdjson::dom::element report;
    if (parseJson(parser, systemProfilerJSON).get(report) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    const auto fields = hardware(report);
    auto name = fields ? text(*fields, "machine_name") : std::nullopt;
    if (!name) {
        return std::nullopt;
    }
    MacInfo info;
    info.name = *std::move(name);
    const auto chip = text(*fields, "chip_type");
    // The older key names Intel's processors only, whatever stands there.
    info.isAppleSilicon = chip && chip->starts_with("Apple");
    info.chip = chip ? *chip : text(*fields, "cpu_type").value_or("Unknown chip");
    const auto memory = text(*fields, "physical_memory");
    info.memoryBytes = (memory ? parseSize(*memory) : std::nullopt).value_or(physicalMemory);
    return info;
}

std::optional<std::int64_t> MacInfo::parseSize(std::string_view text) {
    struct Unit {
        std::string_view name;
        int shift;
    };
    constexpr std::array<Unit, 3> units{{{"TB", 40}, {"GB", 30}, {"MB", 20}}};
    const auto pieces = splitDroppingEmpty(text, ' ');
    if (pieces.size() != 2) {
        return std::nullopt;
    }
    const auto number = parseInteger<std::int64_t>(pieces[0]);
    const auto unit = std::find_if(units.begin(), units.end(),
                                   [&](const Unit& each) { return each.name == pieces[1]; });
    if (!number || unit == units.end()) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(*number) << unit->shift);
}

} // namespace pacelet
