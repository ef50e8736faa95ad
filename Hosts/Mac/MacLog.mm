#include "Hosts/Mac/MacLog.h"

#include "Hosts/Mac/Records/Records.h"

#import <os/log.h>

#include <string>

namespace pacelet::Mac {

void MacLog::write(LogLevel level, std::string_view subsystem, std::string_view category,
                   std::string_view message) {
    // The system keeps one object for each pair, for as long as the program runs.
    const os_log_t log =
        os_log_create(std::string{subsystem}.c_str(), std::string{category}.c_str());
    const std::string text{message};
    os_log_with_type(log, static_cast<os_log_type_t>(logTypeOf(level)), "%{public}s", text.c_str());
}

} // namespace pacelet::Mac
