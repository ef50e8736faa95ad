#pragma once

// Only what Hosts/Mac calls, after the public page
// developer.apple.com/documentation/servicemanagement/smappservice.

#include <Foundation/Foundation.h>

typedef NS_ENUM_TYPE(SMAppServiceStatus){SMAppServiceStatusNotRegistered, SMAppServiceStatusEnabled,
                                         SMAppServiceStatusRequiresApproval,
                                         SMAppServiceStatusNotFound};

@interface SMAppService : NSObject
@property(class, readonly) SMAppService* mainAppService;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError**)error;
- (BOOL)unregisterAndReturnError:(NSError**)error;
@end
