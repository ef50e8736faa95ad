#pragma once

// Only what Hosts/Mac calls, after the public pages below
// developer.apple.com/documentation/corefoundation: cftype, cfarray, cfdictionary, cfnumber,
// cfboolean, cfstring, cfpreferencesappsynchronize(_:), and corefoundation/cgrect.

#include <MacTypes.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const void* CFTypeRef;
typedef unsigned long CFTypeID;
typedef long CFIndex;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFArray* CFArrayRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef const struct __CFBoolean* CFBooleanRef;
typedef const struct __CFNumber* CFNumberRef;
typedef const struct __CFString* CFStringRef;
typedef UInt32 CFStringEncoding;
typedef CFIndex CFNumberType;

enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };
enum : CFNumberType { kCFNumberSInt64Type = 4, kCFNumberDoubleType = 13 };

typedef struct {
    CFIndex version;
    const void* callbacks[5];
} CFDictionaryKeyCallBacks;
typedef struct {
    CFIndex version;
    const void* callbacks[4];
} CFDictionaryValueCallBacks;
typedef void (*CFDictionaryApplierFunction)(const void* key, const void* value, void* context);

extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFBooleanRef kCFBooleanTrue;
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
extern const CFStringRef kCFPreferencesCurrentApplication;

void CFRelease(CFTypeRef cf);
CFTypeID CFGetTypeID(CFTypeRef cf);
CFTypeID CFBooleanGetTypeID(void);
CFTypeID CFNumberGetTypeID(void);
CFTypeID CFStringGetTypeID(void);
Boolean CFBooleanGetValue(CFBooleanRef boolean);
Boolean CFNumberIsFloatType(CFNumberRef number);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType theType, void* valuePtr);
CFIndex CFStringGetLength(CFStringRef theString);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding);
CFIndex CFArrayGetCount(CFArrayRef theArray);
const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx);
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values,
                                   CFIndex numValues, const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks);
void CFDictionaryApplyFunction(CFDictionaryRef theDict, CFDictionaryApplierFunction applier,
                               void* context);
Boolean CFPreferencesAppSynchronize(CFStringRef applicationID);

typedef double CGFloat;
typedef struct CGPoint {
    CGFloat x;
    CGFloat y;
} CGPoint;
typedef struct CGSize {
    CGFloat width;
    CGFloat height;
} CGSize;
typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;

#ifdef __cplusplus
}
#endif
