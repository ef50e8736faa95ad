#include "Hosts/Mac/MacLoginItems.h"

#include "Hosts/Mac/Records/Records.h"

#import <ServiceManagement/ServiceManagement.h>

namespace pacelet::Mac {

bool MacLoginItems::registerProgram() {
    @autoreleasepool {
        return [[SMAppService mainAppService] registerAndReturnError:nil];
    }
}

bool MacLoginItems::unregisterProgram() {
    @autoreleasepool {
        return [[SMAppService mainAppService] unregisterAndReturnError:nil];
    }
}

LoginItemStatus MacLoginItems::status() {
    @autoreleasepool {
        return loginItemStatusOf([[SMAppService mainAppService] status]);
    }
}

} // namespace pacelet::Mac
