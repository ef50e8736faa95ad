#include "Hosts/Linux/Network/WiFiReader.h"

#include "Hosts/Linux/Network/Nl80211.h"
#include "Hosts/Linux/Network/PathReader.h"
#include "Hosts/Linux/Network/WirelessTable.h"
#include "Hosts/Linux/Proc/FolderReader.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace pacelet::Linux {

namespace {

/// A rate that is not known must not be finite; unlike a NaN, this one equals itself.
constexpr double unknownRate = std::numeric_limits<double>::infinity();

class ConfiguredInterface final : public WiFiInterface {
public:
    ConfiguredInterface(std::unique_ptr<Nl80211> service, WirelessInterface interface)
        : service_{std::move(service)},
          interface_{std::move(interface)} {}

    std::int64_t rssiValue() override { return station().signalDBm.value_or(0); }
    std::int64_t noiseMeasurement() override {
        return service_->noise(interface_.index).value_or(0);
    }
    double transmitRate() override { return station().transmitMbps.value_or(unknownRate); }
    std::optional<int> channelBand() override {
        if (!interface_.frequencyMHz) {
            return std::nullopt;
        }
        return bandOfFrequency(*interface_.frequencyMHz);
    }

private:
    Station station() { return service_->station(interface_.index).value_or(Station{}); }

    std::unique_ptr<Nl80211> service_;
    WirelessInterface interface_;
};

std::vector<WirelessRow> readWirelessTable() {
    ReadBuffer buffer;
    return parseWirelessTable(FolderReader{"/proc/net"}.read("wireless", buffer).value_or(""));
}

/// An interface of an old driver, which tells neither channel nor rate here.
class TabledInterface final : public WiFiInterface {
public:
    explicit TabledInterface(std::string name)
        : name_{std::move(name)} {}

    std::int64_t rssiValue() override { return row().signalDBm; }
    std::int64_t noiseMeasurement() override { return row().noiseDBm; }
    double transmitRate() override { return unknownRate; }
    std::optional<int> channelBand() override { return std::nullopt; }

private:
    WirelessRow row() const {
        const auto rows = readWirelessTable();
        const auto place = std::ranges::find(rows, name_, &WirelessRow::interfaceName);
        return place == rows.end() ? WirelessRow{} : *place;
    }

    std::string name_;
};

/// The element that `member` names as the default interface, else the first; null without any.
template<typename Element>
const Element* preferred(const std::vector<Element>& elements, std::string Element::*member) {
    if (elements.size() > 1) {
        NetlinkSocket routing{NETLINK_ROUTE};
        if (const auto interface = readDefaultInterface(routing)) {
            const auto place = std::ranges::find(elements, interface->name, member);
            return place == elements.end() ? &elements.front() : &*place;
        }
    }
    return elements.empty() ? nullptr : &elements.front();
}

} // namespace

std::unique_ptr<WiFiInterface> readWiFiInterface() {
    auto service = std::make_unique<Nl80211>();
    const auto interfaces = service->interfaces();
    if (const auto* chosen = preferred(interfaces, &WirelessInterface::name)) {
        return std::make_unique<ConfiguredInterface>(std::move(service), *chosen);
    }
    const auto rows = readWirelessTable();
    if (const auto* chosen = preferred(rows, &WirelessRow::interfaceName)) {
        return std::make_unique<TabledInterface>(chosen->interfaceName);
    }
    return nullptr;
}

} // namespace pacelet::Linux
