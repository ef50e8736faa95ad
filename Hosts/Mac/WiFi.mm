#include "Hosts/Mac/MacNetworkLink.h"
#include "Hosts/Mac/Records/Records.h"

#import <CoreWLAN/CoreWLAN.h>

namespace pacelet::Mac {

namespace {

class CoreWLANInterface final : public WiFiInterface {
public:
    explicit CoreWLANInterface(CWInterface* interface) : interface_{interface} {}

    std::int64_t rssiValue() override {
        @autoreleasepool {
            return [interface_ rssiValue];
        }
    }

    std::int64_t noiseMeasurement() override {
        @autoreleasepool {
            return [interface_ noiseMeasurement];
        }
    }

    double transmitRate() override {
        @autoreleasepool {
            return [interface_ transmitRate];
        }
    }

    std::optional<int> channelBand() override {
        @autoreleasepool {
            CWChannel* const channel = [interface_ wlanChannel];
            return channelBandOf(channel != nil ? std::optional<std::int64_t>{[channel channelBand]}
                                                : std::nullopt);
        }
    }

private:
    CWInterface* interface_;
};

} // namespace

std::unique_ptr<WiFiInterface> MacNetworkLink::wifiInterface() {
    @autoreleasepool {
        CWInterface* const interface = [[CWWiFiClient sharedWiFiClient] interface];
        return interface != nil ? std::make_unique<CoreWLANInterface>(interface) : nullptr;
    }
}

} // namespace pacelet::Mac
