#pragma once

// Only what Hosts/Mac calls, after the public pages of the classes below
// developer.apple.com/documentation/foundation: nsstring, nsarray, nsdictionary, nsnumber, nsdata,
// nsurl, nsfilemanager, nsprocessinfo, nsuserdefaults, nsnotificationcenter, nsoperationqueue,
// urlresourcevalues, nshomedirectory(), nsfastenumeration.

#include <CoreFoundation/CoreFoundation.h>
#include <objc/NSObject.h>

@class NSDate, NSError, NSString;

#define NS_ENUM_TYPE(name)                                                                         \
    enum name : NSInteger name;                                                                    \
    enum name : NSInteger

typedef double NSTimeInterval;
typedef NSUInteger NSStringEncoding;
typedef NSString* NSURLResourceKey;
typedef NSString* NSNotificationName;
typedef CGRect NSRect;

enum : NSStringEncoding { NSUTF8StringEncoding = 4 };
typedef NS_ENUM_TYPE(NSProcessInfoThermalState){
    NSProcessInfoThermalStateNominal, NSProcessInfoThermalStateFair,
    NSProcessInfoThermalStateSerious, NSProcessInfoThermalStateCritical};
typedef NSUInteger NSSearchPathDirectory;
typedef NSUInteger NSSearchPathDomainMask;
enum : NSSearchPathDirectory { NSApplicationSupportDirectory = 14 };
enum : NSSearchPathDomainMask { NSUserDomainMask = 1 };

typedef struct {
    unsigned long state;
    id __unsafe_unretained* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

#ifdef __cplusplus
extern "C" {
#endif
extern NSURLResourceKey const NSURLVolumeAvailableCapacityForImportantUsageKey;
extern NSURLResourceKey const NSURLVolumeTotalCapacityKey;
NSString* NSHomeDirectory(void);
#ifdef __cplusplus
}
#endif

static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h) {
    return NSRect{{x, y}, {w, h}};
}

@protocol NSCopying
@end

@interface NSString : NSObject <NSCopying>
- (instancetype)initWithBytes:(const void*)bytes
                       length:(NSUInteger)length
                     encoding:(NSStringEncoding)encoding;
@property(readonly) const char* UTF8String;
@end

@interface NSArray<__covariant ObjectType> : NSObject
+ (instancetype)arrayWithObjects:(const ObjectType[])objects count:(NSUInteger)count;
@property(readonly) NSUInteger count;
@property(readonly) ObjectType firstObject;
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject
+ (instancetype)dictionaryWithObjects:(const ObjectType[])objects
                              forKeys:(const KeyType<NSCopying>[])keys
                                count:(NSUInteger)count;
- (ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

@interface NSNumber : NSObject
+ (NSNumber*)numberWithBool:(BOOL)value;
@property(readonly) BOOL boolValue;
@property(readonly) long long longLongValue;
@end

@interface NSData : NSObject
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
@property(readonly) const void* bytes __attribute__((objc_returns_inner_pointer));
@property(readonly) NSUInteger length;
@end

@interface NSURL : NSObject
+ (instancetype)URLWithString:(NSString*)text;
+ (NSURL*)fileURLWithPath:(NSString*)path;
@property(readonly, copy) NSString* path;
- (NSDictionary<NSURLResourceKey, id>*)resourceValuesForKeys:(NSArray<NSURLResourceKey>*)keys
                                                       error:(NSError**)error;
@end

@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager* defaultManager;
- (BOOL)fileExistsAtPath:(NSString*)path;
- (NSArray<NSURL*>*)URLsForDirectory:(NSSearchPathDirectory)directory
                           inDomains:(NSSearchPathDomainMask)domainMask;
@end

@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly) NSUInteger activeProcessorCount;
@property(readonly) unsigned long long physicalMemory;
@property(readonly) NSTimeInterval systemUptime;
@property(readonly) NSProcessInfoThermalState thermalState;
@property(readonly, getter=isLowPowerModeEnabled) BOOL lowPowerModeEnabled;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (id)objectForKey:(NSString*)defaultName;
- (void)setObject:(id)value forKey:(NSString*)defaultName;
@end

@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue* mainQueue;
@end

@interface NSNotification : NSObject
@end

@interface NSNotificationCenter : NSObject
- (id)addObserverForName:(NSNotificationName)name
                  object:(id)object
                   queue:(NSOperationQueue*)queue
              usingBlock:(void (^)(NSNotification* notification))block;
- (void)removeObserver:(id)observer;
@end
