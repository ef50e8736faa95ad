#include "Hosts/Recorded/TapedTools.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fmt/ranges.h>

namespace pacelet::Recorded {

Shell::Output TapedTools::run(const std::string& executable,
                              const std::vector<std::string>& arguments) {
    constexpr auto noSuchFile = static_cast<std::int32_t>(std::errc::no_such_file_or_directory);
    const auto call = tape_.hidden(fmt::format("run {} {}", executable, fmt::join(arguments, " ")));
    const auto live = [&]() -> ToolAnswer {
        try {
            std::vector<std::string> known = arguments;
            Wire::changeTexts(known, [&](const auto& text) { return disguise_->reveal(text); });
            ToolAnswer answer{{}, live_->run(executable, known)};
            std::string& text = answer.output.stdout;
            if (executable == "/bin/ps" && !arguments.empty()) {
                text = arguments.back().ends_with("args=") ? disguise_->hideCommandLines(text)
                                                           : disguise_->hideTable(text);
            }
            return answer;
        } catch (const LaunchError& error) {
            return {error.code().value(), {}};
        }
    };
    auto answer = tape_.answer<ToolAnswer>(call, {noSuchFile, {}}, live);
    if (answer.launchFailure) {
        throw LaunchError{executable, {*answer.launchFailure, std::generic_category()}};
    }
    return std::move(answer.output);
}

std::optional<std::size_t> TapedKernel::sysctlbyname(std::string_view name,
                                                     std::span<std::byte> record) {
    // Bytes and no text, but for the names of the system and the model: nothing to disguise.
    using Bytes = std::optional<std::vector<std::uint8_t>>;
    const auto live = [&]() -> Bytes {
        const auto size = live_->sysctlbyname(name, record);
        const auto* const first = reinterpret_cast<const std::uint8_t*>(record.data());
        return size ? Bytes{std::in_place, first, first + *size} : std::nullopt;
    };
    const auto bytes = tape_.answer<Bytes>(fmt::format("sysctlbyname {}", name), {}, live);
    if (!bytes || bytes->size() > record.size()) {
        return std::nullopt;
    }
    std::ranges::transform(*bytes, record.begin(), [](auto byte) { return std::byte{byte}; });
    return bytes->size();
}

std::optional<VMStatistics64> TapedKernel::hostStatistics64() {
    return tape_.answer<std::optional<VMStatistics64>>(
        "hostStatistics64", {}, [this] { return live_->hostStatistics64(); });
}

std::int64_t TapedKernel::pageSize() {
    return tape_.answer<std::int64_t>("pageSize", 4096, [this] { return live_->pageSize(); });
}

std::optional<std::int64_t> TapedKernel::physFootprint(std::int32_t pid) {
    return tape_.answer<std::optional<std::int64_t>>(
        fmt::format("physFootprint {}", pid), {}, [=, this] { return live_->physFootprint(pid); });
}

std::int64_t TapedKernel::activeProcessorCount() {
    return tape_.answer<std::int64_t>("activeProcessorCount", 1,
                                      [this] { return live_->activeProcessorCount(); });
}

std::int64_t TapedKernel::physicalMemory() {
    return tape_.answer<std::int64_t>("physicalMemory", 0,
                                      [this] { return live_->physicalMemory(); });
}

std::optional<std::int64_t> TapedKernel::availableMemory() {
    return tape_.answer<std::optional<std::int64_t>>("availableMemory", {},
                                                     [this] { return live_->availableMemory(); });
}

int TapedKernel::thermalState() {
    return tape_.answer<int>("thermalState", 0, [this] { return live_->thermalState(); });
}

Seconds TapedKernel::systemUptime() {
    return Seconds{
        tape_.answer<double>("systemUptime", 0, [this] { return live_->systemUptime().count(); })};
}

bool TapedKernel::isLowPowerModeEnabled() {
    return tape_.answer<bool>("isLowPowerModeEnabled", false,
                              [this] { return live_->isLowPowerModeEnabled(); });
}

std::optional<VolumeCapacities> TapedKernel::volumeCapacities(const std::string& path) {
    return tape_.answer<std::optional<VolumeCapacities>>(
        "volumeCapacities " + tape_.hidden(path), {},
        [&] { return live_->volumeCapacities(disguise_->reveal(path)); });
}

std::uint32_t TapedKernel::getuid() {
    return tape_.answer<std::uint32_t>("getuid", 0, [this] { return live_->getuid(); });
}

} // namespace pacelet::Recorded
