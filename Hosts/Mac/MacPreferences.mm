#include "Hosts/Mac/MacPreferences.h"

#include "Hosts/Mac/Foundation.h"
#include "Hosts/Mac/Records/Records.h"

namespace pacelet::Mac {

namespace {

/// Only what the program itself stores; all else is of another class.
PropertyValue storedValue(std::string_view key) {
    NSString* const name = textFrom(key);
    const id value = name != nil ? [[NSUserDefaults standardUserDefaults] objectForKey:name] : nil;
    if ([value isKindOfClass:[NSNumber class]]) {
        NSNumber* const number = value;
        if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID()) {
            return static_cast<bool>([number boolValue]);
        }
        return static_cast<std::int64_t>([number longLongValue]);
    }
    if ([value isKindOfClass:[NSData class]]) {
        NSData* const data = value;
        return DataBytes{std::string{static_cast<const char*>([data bytes]), [data length]}};
    }
    return {};
}

void store(std::string_view key, id value) {
    if (NSString* const name = textFrom(key); name != nil) {
        [[NSUserDefaults standardUserDefaults] setObject:value forKey:name];
    }
}

} // namespace

std::optional<bool> MacPreferences::boolean(std::string_view key) {
    @autoreleasepool {
        return truthOf(storedValue(key));
    }
}

void MacPreferences::setBoolean(std::string_view key, bool value) {
    @autoreleasepool {
        store(key, [NSNumber numberWithBool:value]);
    }
}

std::optional<std::string> MacPreferences::data(std::string_view key) {
    @autoreleasepool {
        return dataOf(storedValue(key));
    }
}

void MacPreferences::setData(std::string_view key, std::string_view bytes) {
    @autoreleasepool {
        store(key, [NSData dataWithBytes:bytes.data() length:bytes.size()]);
    }
}

void MacPreferences::synchronize() {
    @autoreleasepool {
        CFPreferencesAppSynchronize(kCFPreferencesCurrentApplication);
    }
}

} // namespace pacelet::Mac
