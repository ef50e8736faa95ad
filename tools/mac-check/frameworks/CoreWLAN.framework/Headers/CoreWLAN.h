#pragma once

// Only what Hosts/Mac calls, after the public pages of the classes below
// developer.apple.com/documentation/corewlan: cwwificlient, cwinterface, cwchannel, cwchannelband.

#include <Foundation/Foundation.h>

typedef NS_ENUM_TYPE(CWChannelBand){kCWChannelBandUnknown = 0, kCWChannelBand2GHz = 1,
                                    kCWChannelBand5GHz = 2, kCWChannelBand6GHz = 3};

@interface CWChannel : NSObject
@property(readonly) CWChannelBand channelBand;
@end

@interface CWInterface : NSObject
- (NSInteger)rssiValue;
- (NSInteger)noiseMeasurement;
- (double)transmitRate;
- (CWChannel*)wlanChannel;
@end

@interface CWWiFiClient : NSObject
+ (CWWiFiClient*)sharedWiFiClient;
- (CWInterface*)interface;
@end
