#pragma once

// Only what Hosts/Mac calls, after the public pages below
// developer.apple.com/documentation/coregraphics: cgwindowlistcopywindowinfo(_:_:),
// cggetactivedisplaylist(_:_:_:), cgdisplaycopydisplaymode(_:),
// cgdisplaycopyalldisplaymodes(_:_:), cgdisplaymode, cgerror.

#include <CoreFoundation/CoreFoundation.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef uint32_t CGDirectDisplayID;
typedef uint32_t CGWindowID;
typedef uint32_t CGWindowListOption;
typedef int32_t CGError;
typedef struct CGDisplayMode* CGDisplayModeRef;
typedef struct CGImage* CGImageRef;

enum : CGWindowListOption { kCGWindowListOptionOnScreenOnly = 1 << 0 };
enum : CGError { kCGErrorSuccess = 0 };
#define kCGNullWindowID ((CGWindowID)0)

extern const CFStringRef kCGDisplayShowDuplicateLowResolutionModes;

CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeToWindow);
CGError CGGetActiveDisplayList(uint32_t maxDisplays, CGDirectDisplayID* activeDisplays,
                               uint32_t* displayCount);
CGDisplayModeRef CGDisplayCopyDisplayMode(CGDirectDisplayID display);
CFArrayRef CGDisplayCopyAllDisplayModes(CGDirectDisplayID display, CFDictionaryRef options);
size_t CGDisplayModeGetPixelWidth(CGDisplayModeRef mode);
void CGDisplayModeRelease(CGDisplayModeRef mode);

#ifdef __cplusplus
}
#endif
