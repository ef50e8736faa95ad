#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>

namespace pacelet::Mac {

/// Nothing for nil, and for a text that has no form in UTF-8.
inline std::optional<std::string> stringFrom(NSString* text) {
    const char* const bytes = [text UTF8String];
    return bytes != nullptr ? std::optional<std::string>{bytes} : std::nullopt;
}

/// Nil where the bytes are no UTF-8.
inline NSString* textFrom(std::string_view bytes) {
    return [[NSString alloc] initWithBytes:bytes.data()
                                    length:bytes.size()
                                  encoding:NSUTF8StringEncoding];
}

} // namespace pacelet::Mac
