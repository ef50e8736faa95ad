#include "Hosts/Mac/Desktop.h"

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

namespace pacelet::Mac {

bool hasDesktop() {
    const CFDictionaryRef session = CGSessionCopyCurrentDictionary();
    if (session == nullptr) {
        return false;
    }
    CFRelease(session);
    return true;
}

DesktopWishes wishesOfDesktop() {
    @autoreleasepool {
        NSWorkspace* const workspace = [NSWorkspace sharedWorkspace];
        return {.reducedMotion = workspace.accessibilityDisplayShouldReduceMotion != NO,
                .highContrast = workspace.accessibilityDisplayShouldIncreaseContrast != NO};
    }
}

void wearDark() {
    @autoreleasepool {
        NSApplication* const application = [NSApplication sharedApplication];
        application.appearance = [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];
    }
}

void showAboutPanel() {
    @autoreleasepool {
        [[NSApplication sharedApplication] orderFrontStandardAboutPanel:nil];
    }
}

} // namespace pacelet::Mac
