#include "Hosts/Mac/ProcessInfo.h"

#include "Hosts/Mac/Foundation.h"

namespace pacelet::Mac::ProcessInfo {

namespace {

std::optional<std::int64_t> bytesAt(NSURLResourceKey key,
                                    NSDictionary<NSURLResourceKey, id>* values) {
    const id value = values[key];
    return [value isKindOfClass:[NSNumber class]]
               ? std::optional{static_cast<std::int64_t>(
                     [static_cast<NSNumber*>(value) longLongValue])}
               : std::nullopt;
}

} // namespace

std::int64_t activeProcessorCount() {
    return static_cast<std::int64_t>([[NSProcessInfo processInfo] activeProcessorCount]);
}

std::int64_t physicalMemory() {
    return static_cast<std::int64_t>([[NSProcessInfo processInfo] physicalMemory]);
}

std::int64_t thermalState() {
    return [[NSProcessInfo processInfo] thermalState];
}

double systemUptime() {
    return [[NSProcessInfo processInfo] systemUptime];
}

bool isLowPowerModeEnabled() {
    return [[NSProcessInfo processInfo] isLowPowerModeEnabled];
}

std::optional<VolumeCapacities> volumeCapacities(const std::string& path) {
    @autoreleasepool {
        NSString* const text = textFrom(path);
        if (text == nil) {
            return std::nullopt;
        }
        NSArray<NSURLResourceKey>* const keys =
            @[ NSURLVolumeAvailableCapacityForImportantUsageKey, NSURLVolumeTotalCapacityKey ];
        NSDictionary<NSURLResourceKey, id>* const values =
            [[NSURL fileURLWithPath:text] resourceValuesForKeys:keys error:nil];
        if (values == nil) {
            return std::nullopt;
        }
        return VolumeCapacities{bytesAt(NSURLVolumeAvailableCapacityForImportantUsageKey, values),
                                bytesAt(NSURLVolumeTotalCapacityKey, values)};
    }
}

std::string homeFolder() {
    @autoreleasepool {
        return stringFrom(NSHomeDirectory()).value_or("/");
    }
}

std::string applicationSupportFolder() {
    @autoreleasepool {
        NSURL* const folder =
            [[[NSFileManager defaultManager] URLsForDirectory:NSApplicationSupportDirectory
                                                    inDomains:NSUserDomainMask] firstObject];
        return stringFrom([folder path]).value_or(homeFolder() + "/Library/Application Support");
    }
}

} // namespace pacelet::Mac::ProcessInfo
