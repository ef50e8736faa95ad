#include "Hosts/Mac/MacWindowServer.h"

#include "Hosts/Mac/Records/Records.h"

#include <CoreGraphics/CoreGraphics.h>

#include <memory>
#include <type_traits>

namespace pacelet::Mac {

namespace {

struct Release {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// An object of CoreFoundation that a call has handed over to us.
template<typename Reference>
using Owned = std::unique_ptr<std::remove_pointer_t<Reference>, Release>;

PropertyValue textOf(CFStringRef text) {
    const CFIndex room =
        CFStringGetMaximumSizeForEncoding(CFStringGetLength(text), kCFStringEncodingUTF8) + 1;
    std::string bytes(static_cast<std::size_t>(room), '\0');
    if (!CFStringGetCString(text, bytes.data(), room, kCFStringEncodingUTF8)) {
        return {};
    }
    return std::string{bytes.c_str()};
}

PropertyValue numberOf(CFNumberRef number) {
    if (CFNumberIsFloatType(number)) {
        double value = 0;
        CFNumberGetValue(number, kCFNumberDoubleType, &value);
        return value;
    }
    std::int64_t value = 0;
    CFNumberGetValue(number, kCFNumberSInt64Type, &value);
    return value;
}

PropertyValue propertyValue(CFTypeRef object) {
    const CFTypeID type = CFGetTypeID(object);
    if (type == CFBooleanGetTypeID()) {
        return static_cast<bool>(CFBooleanGetValue(static_cast<CFBooleanRef>(object)));
    }
    if (type == CFNumberGetTypeID()) {
        return numberOf(static_cast<CFNumberRef>(object));
    }
    return type == CFStringGetTypeID() ? textOf(static_cast<CFStringRef>(object)) : PropertyValue{};
}

PropertyDictionary propertiesOf(CFDictionaryRef dictionary) {
    PropertyDictionary properties;
    CFDictionaryApplyFunction(
        dictionary,
        [](const void* key, const void* value, void* context) {
            const PropertyValue name = propertyValue(key);
            if (const auto* text = std::get_if<std::string>(&name)) {
                static_cast<PropertyDictionary*>(context)->emplace(*text, propertyValue(value));
            }
        },
        &properties);
    return properties;
}

/// All modes are asked for, those too that differ in nothing but the pixels for a point.
Owned<CFDictionaryRef> allModes() {
    const void* key = kCGDisplayShowDuplicateLowResolutionModes;
    const void* value = kCFBooleanTrue;
    return Owned<CFDictionaryRef>{CFDictionaryCreate(kCFAllocatorDefault, &key, &value, 1,
                                                     &kCFTypeDictionaryKeyCallBacks,
                                                     &kCFTypeDictionaryValueCallBacks)};
}

} // namespace

std::optional<std::vector<WindowDictionary>> MacWindowServer::windowInfo() {
    const Owned<CFArrayRef> list{
        CGWindowListCopyWindowInfo(kCGWindowListOptionOnScreenOnly, kCGNullWindowID)};
    if (!list) {
        return std::nullopt;
    }
    std::vector<WindowDictionary> windows;
    for (CFIndex index = 0; index < CFArrayGetCount(list.get()); ++index) {
        windows.push_back(windowDictionary(
            propertiesOf(static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(list.get(), index)))));
    }
    return windows;
}

std::optional<std::vector<std::uint32_t>> MacWindowServer::activeDisplays(std::size_t maximum) {
    std::vector<CGDirectDisplayID> displays(maximum);
    std::uint32_t count = 0;
    if (CGGetActiveDisplayList(static_cast<std::uint32_t>(maximum), displays.data(), &count) !=
        kCGErrorSuccess) {
        return std::nullopt;
    }
    displays.resize(std::min<std::size_t>(count, maximum));
    return displays;
}

std::optional<std::int64_t> MacWindowServer::currentModeWidth(std::uint32_t display) {
    CGDisplayModeRef const mode = CGDisplayCopyDisplayMode(display);
    if (mode == nullptr) {
        return std::nullopt;
    }
    const auto width = static_cast<std::int64_t>(CGDisplayModeGetPixelWidth(mode));
    CGDisplayModeRelease(mode);
    return width;
}

std::optional<std::vector<std::int64_t>> MacWindowServer::modeWidths(std::uint32_t display) {
    const Owned<CFArrayRef> modes{CGDisplayCopyAllDisplayModes(display, allModes().get())};
    if (!modes) {
        return std::nullopt;
    }
    std::vector<std::int64_t> widths;
    for (CFIndex index = 0; index < CFArrayGetCount(modes.get()); ++index) {
        const void* const mode = CFArrayGetValueAtIndex(modes.get(), index);
        widths.push_back(static_cast<std::int64_t>(
            CGDisplayModeGetPixelWidth(static_cast<CGDisplayModeRef>(const_cast<void*>(mode)))));
    }
    return widths;
}

} // namespace pacelet::Mac
