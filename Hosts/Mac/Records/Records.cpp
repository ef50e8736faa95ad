#include "Hosts/Mac/Records/Records.h"

#include <algorithm>

namespace pacelet::Mac {

namespace {

constexpr int pathIsSatisfied = 1;

constexpr std::uint8_t logTypeInformation = 0x01;
constexpr std::uint8_t logTypeError = 0x10;

constexpr int hottest = 3;

} // namespace

WindowDictionary windowDictionary(const PropertyDictionary& window) {
    WindowDictionary dictionary;
    for (const auto& [key, value] : window) {
        if (const auto* truth = std::get_if<bool>(&value)) {
            dictionary.emplace(key, *truth);
        } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
            dictionary.emplace(key, *whole);
        } else if (const auto* number = std::get_if<double>(&value)) {
            dictionary.emplace(key, *number);
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            dictionary.emplace(key, *text);
        }
    }
    return dictionary;
}

std::optional<bool> truthOf(const PropertyValue& value) {
    if (const auto* truth = std::get_if<bool>(&value)) {
        return *truth;
    }
    const auto* number = std::get_if<std::int64_t>(&value);
    return number && (*number == 0 || *number == 1) ? std::optional{*number == 1} : std::nullopt;
}

std::optional<std::string> dataOf(const PropertyValue& value) {
    const auto* data = std::get_if<DataBytes>(&value);
    return data ? std::optional{data->bytes} : std::nullopt;
}

ActivationPolicy activationPolicyOf(std::int64_t policy) {
    switch (policy) {
    case 0:
        return ActivationPolicy::regular;
    case 1:
        return ActivationPolicy::accessory;
    default:
        return ActivationPolicy::prohibited;
    }
}

LoginItemStatus loginItemStatusOf(std::int64_t status) {
    switch (status) {
    case 0:
        return LoginItemStatus::notRegistered;
    case 1:
        return LoginItemStatus::enabled;
    case 2:
        return LoginItemStatus::requiresApproval;
    default:
        return LoginItemStatus::notFound;
    }
}

int thermalStateOf(std::int64_t state) {
    return static_cast<int>(std::clamp<std::int64_t>(state, 0, hottest));
}

NetworkPath networkPathOf(int status, bool usesWiFi, bool usesWiredEthernet) {
    return {status == pathIsSatisfied, usesWiFi, usesWiredEthernet};
}

std::optional<int> channelBandOf(std::optional<std::int64_t> band) {
    if (!band) {
        return std::nullopt;
    }
    return *band >= 1 && *band <= 3 ? static_cast<int>(*band) : 0;
}

std::uint8_t logTypeOf(LogLevel level) {
    return level == LogLevel::error ? logTypeError : logTypeInformation;
}

std::optional<std::size_t> filledBytes(int status, std::size_t size, std::size_t room) {
    return status == 0 && size <= room ? std::optional{size} : std::nullopt;
}

} // namespace pacelet::Mac
