#pragma once

// Only what Hosts/Mac calls, after the public pages of the classes below
// developer.apple.com/documentation/appkit: nsworkspace, nsworkspace/openconfiguration,
// nsrunningapplication, nsapplication/activationpolicy-swift.enum, nsimage, nsbitmapimagerep.

#include <CoreGraphics/CoreGraphics.h>
#include <Foundation/Foundation.h>

@class NSGraphicsContext;

typedef NS_ENUM_TYPE(NSApplicationActivationPolicy){NSApplicationActivationPolicyRegular,
                                                    NSApplicationActivationPolicyAccessory,
                                                    NSApplicationActivationPolicyProhibited};
typedef NSUInteger NSBitmapImageFileType;
enum : NSBitmapImageFileType { NSBitmapImageFileTypePNG = 4 };
typedef NSString* NSBitmapImageRepPropertyKey;
typedef NSString* NSImageHintKey;

#ifdef __cplusplus
extern "C" {
#endif
extern NSNotificationName const NSWorkspaceWillSleepNotification;
extern NSNotificationName const NSWorkspaceDidWakeNotification;
#ifdef __cplusplus
}
#endif

@interface NSRunningApplication : NSObject
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:(NSString*)identifier;
@property(readonly, copy) NSURL* bundleURL;
@property(readonly, copy) NSURL* executableURL;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly) NSApplicationActivationPolicy activationPolicy;
@property(readonly, getter=isTerminated) BOOL terminated;
- (BOOL)terminate;
- (BOOL)forceTerminate;
@end

@interface NSImage : NSObject
- (CGImageRef)CGImageForProposedRect:(NSRect*)proposedDestRect
                             context:(NSGraphicsContext*)referenceContext
                               hints:(NSDictionary<NSImageHintKey, id>*)hints;
@end

@interface NSBitmapImageRep : NSObject
- (instancetype)initWithCGImage:(CGImageRef)image;
- (NSData*)representationUsingType:(NSBitmapImageFileType)type
                        properties:(NSDictionary<NSBitmapImageRepPropertyKey, id>*)properties;
@end

@interface NSWorkspaceOpenConfiguration : NSObject
+ (instancetype)configuration;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
- (BOOL)openURL:(NSURL*)url;
- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier;
- (void)openApplicationAtURL:(NSURL*)applicationURL
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication* app, NSError* error))handler;
- (NSImage*)iconForFile:(NSString*)fullPath;
@end
