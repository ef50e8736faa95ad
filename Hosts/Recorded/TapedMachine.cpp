#include "Hosts/Recorded/TapedMachine.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace pacelet::Recorded {

namespace {

constexpr const char* abilitiesCall = "abilities";

std::filesystem::path makeFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "pacelet-replay-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::system_error{errno, std::generic_category(), "no temporary folder"};
    }
    return pattern;
}

} // namespace

Recorder::Recorder(const Platform& machine)
    : machine_{machine},
      disguise_{machine.home, machine.kernel.getuid(), machine.system},
      tools_{tape_, &machine.tools, &disguise_},
      kernel_{tape_, &machine.kernel, &disguise_},
      workspace_{tape_, &machine.workspace, &disguise_},
      network_{tape_, &machine.networkLink},
      windows_{tape_, &machine.windowServer},
      knowledge_{tape_, machine.knowledge, &disguise_},
      items_{tape_, machine.backgroundItems} {}

Platform Recorder::platform() {
    return {tape_,
            tools_,
            kernel_,
            workspace_,
            network_,
            windows_,
            machine_.loginItems,
            machine_.preferences,
            machine_.log,
            machine_.home,
            machine_.root,
            machine_.applicationSupport,
            machine_.system,
            machine_.knowledge != nullptr ? &knowledge_ : nullptr,
            machine_.backgroundItems != nullptr ? &items_ : nullptr,
            machine_.browserExtension,
            machine_.abilities};
}

void Recorder::look() {
    tape_.addLook(
        {unixTime(machine_.clock.now()), machine_.clock.monotonicNow().time_since_epoch().count()});
    tape_.answer<HostAbilities>(abilitiesCall, {}, [this] { return machine_.abilities; });
}

Capture Recorder::capture() {
    Capture capture = tape_.capture();
    capture.system = machine_.system;
    capture.tellsPrograms = machine_.knowledge != nullptr;
    capture.listsBackgroundItems = machine_.backgroundItems != nullptr;
    return capture;
}

std::optional<bool> FleetingPreferences::boolean(std::string_view key) {
    const auto found = values_.find(key);
    const bool* const value = found == values_.end() ? nullptr : std::get_if<bool>(&found->second);
    return value != nullptr ? std::optional{*value} : std::nullopt;
}

void FleetingPreferences::setBoolean(std::string_view key, bool value) {
    values_[std::string{key}] = value;
}

std::optional<std::string> FleetingPreferences::data(std::string_view key) {
    const auto found = values_.find(key);
    const auto* const value =
        found == values_.end() ? nullptr : std::get_if<std::string>(&found->second);
    return value != nullptr ? std::optional{*value} : std::nullopt;
}

void FleetingPreferences::setData(std::string_view key, std::string_view bytes) {
    values_[std::string{key}] = std::string{bytes};
}

Replay::Replay(Capture capture)
    : looks_{capture.looks.size()},
      system_{capture.system},
      tellsPrograms_{capture.tellsPrograms},
      listsBackgroundItems_{capture.listsBackgroundItems},
      folder_{makeFolder()},
      tape_{std::move(capture)} {}

Replay::~Replay() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

Platform Replay::platform() {
    return {tape_,
            tools_,
            kernel_,
            workspace_,
            network_,
            windows_,
            loginItems_,
            preferences_,
            log_,
            folder_ / "home",
            folder_ / "",
            folder_ / "data",
            system_,
            tellsPrograms_ ? &knowledge_ : nullptr,
            listsBackgroundItems_ ? &items_ : nullptr,
            nullptr,
            tape_.answer<HostAbilities>(abilitiesCall, {}, nullptr)};
}

} // namespace pacelet::Recorded
