#include "Hosts/Mac/MacWorkspace.h"

#include "Hosts/Mac/Foundation.h"
#include "Hosts/Mac/Records/Records.h"

#import <AppKit/AppKit.h>

#include <cstring>
#include <utility>

namespace pacelet::Mac {

namespace {

class SystemApplication final : public RunningApplication {
public:
    explicit SystemApplication(NSRunningApplication* application) : application_{application} {}

    std::optional<std::string> bundlePath() const override {
        @autoreleasepool {
            return stringFrom([[application_ bundleURL] path]);
        }
    }

    std::optional<std::string> bundleIdentifier() const override {
        @autoreleasepool {
            return stringFrom([application_ bundleIdentifier]);
        }
    }

    std::optional<std::string> executablePath() const override {
        @autoreleasepool {
            return stringFrom([[application_ executableURL] path]);
        }
    }

    ActivationPolicy activationPolicy() const override {
        return activationPolicyOf([application_ activationPolicy]);
    }

    bool isTerminated() const override { return [application_ isTerminated]; }
    bool terminate() override { return [application_ terminate]; }
    bool forceTerminate() override { return [application_ forceTerminate]; }

private:
    NSRunningApplication* application_;
};

/// The two registrations with the workspace's notification center, for as long as it lives.
class SleepObserver {
public:
    SleepObserver(std::function<void()> willSleep, std::function<void()> didWake)
        : sleep_{observe(NSWorkspaceWillSleepNotification, std::move(willSleep))},
          wake_{observe(NSWorkspaceDidWakeNotification, std::move(didWake))} {}
    SleepObserver(const SleepObserver&) = delete;
    SleepObserver& operator=(const SleepObserver&) = delete;
    ~SleepObserver() {
        [center() removeObserver:sleep_];
        [center() removeObserver:wake_];
    }

private:
    static NSNotificationCenter* center() {
        return [[NSWorkspace sharedWorkspace] notificationCenter];
    }

    static id observe(NSNotificationName name, std::function<void()> told) {
        return [center() addObserverForName:name
                                     object:nil
                                      queue:[NSOperationQueue mainQueue]
                                 usingBlock:^(NSNotification*) {
                                   told();
                                 }];
    }

    id sleep_;
    id wake_;
};

NSData* pngOf(NSImage* image, int size) {
    NSRect frame = NSMakeRect(0, 0, size, size);
    CGImageRef const drawn = [image CGImageForProposedRect:&frame context:nil hints:nil];
    if (drawn == nullptr) {
        return nil;
    }
    NSBitmapImageRep* const bitmap = [[NSBitmapImageRep alloc] initWithCGImage:drawn];
    return [bitmap representationUsingType:NSBitmapImageFileTypePNG properties:@{}];
}

} // namespace

std::vector<std::shared_ptr<RunningApplication>> MacWorkspace::runningApplications() {
    @autoreleasepool {
        std::vector<std::shared_ptr<RunningApplication>> applications;
        for (NSRunningApplication* each in [[NSWorkspace sharedWorkspace] runningApplications]) {
            applications.push_back(std::make_shared<SystemApplication>(each));
        }
        return applications;
    }
}

bool MacWorkspace::isRunning(const std::string& bundleIdentifier) {
    @autoreleasepool {
        NSString* const identifier = textFrom(bundleIdentifier);
        return identifier != nil &&
               [[NSRunningApplication runningApplicationsWithBundleIdentifier:identifier] count] >
                   0;
    }
}

bool MacWorkspace::openURL(const std::string& url) {
    @autoreleasepool {
        NSString* const text = textFrom(url);
        NSURL* const address = text != nil ? [NSURL URLWithString:text] : nil;
        return address != nil && [[NSWorkspace sharedWorkspace] openURL:address];
    }
}

std::optional<std::string> MacWorkspace::applicationPath(const std::string& bundleIdentifier) {
    @autoreleasepool {
        NSString* const identifier = textFrom(bundleIdentifier);
        NSURL* const place =
            identifier != nil
                ? [[NSWorkspace sharedWorkspace] URLForApplicationWithBundleIdentifier:identifier]
                : nil;
        return stringFrom([place path]);
    }
}

void MacWorkspace::openApplication(const std::string& path) {
    @autoreleasepool {
        if (NSString* const text = textFrom(path); text != nil) {
            [[NSWorkspace sharedWorkspace]
                openApplicationAtURL:[NSURL fileURLWithPath:text]
                       configuration:[NSWorkspaceOpenConfiguration configuration]
                   completionHandler:nil];
        }
    }
}

std::optional<EncodedImage> MacWorkspace::icon(const std::string& path, int size) {
    @autoreleasepool {
        NSString* const text = textFrom(path);
        // Of a file that is not there, the workspace would give the picture of an empty page.
        if (text == nil || ![[NSFileManager defaultManager] fileExistsAtPath:text]) {
            return std::nullopt;
        }
        NSData* const png = pngOf([[NSWorkspace sharedWorkspace] iconForFile:text], size);
        if (png == nil) {
            return std::nullopt;
        }
        EncodedImage image{std::vector<std::byte>([png length])};
        std::memcpy(image.bytes.data(), [png bytes], image.bytes.size());
        return image;
    }
}

ObserverHandle MacWorkspace::observeSleep(std::function<void()> willSleep,
                                          std::function<void()> didWake) {
    @autoreleasepool {
        return std::make_shared<SleepObserver>(std::move(willSleep), std::move(didWake));
    }
}

bool MacWorkspace::prefersReducedMotion() {
    @autoreleasepool {
        return [[NSWorkspace sharedWorkspace] accessibilityDisplayShouldReduceMotion];
    }
}

} // namespace pacelet::Mac
