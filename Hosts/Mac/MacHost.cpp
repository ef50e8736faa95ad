#include "Hosts/Mac/MacHost.h"

#include "Hosts/Mac/ProcessInfo.h"
#include "Hosts/Posix/Shell.h"

#include <mach-o/dyld.h>

#include <cstdint>

namespace pacelet::Mac {

Shell::Output MacToolRunner::run(const std::string& executable,
                                 const std::vector<std::string>& arguments) {
    return Shell::run(executable, arguments);
}

std::filesystem::path ownProgram() {
    std::uint32_t size = 0;
    ::_NSGetExecutablePath(nullptr, &size);
    std::string path(size, '\0');
    if (::_NSGetExecutablePath(path.data(), &size) != 0) {
        return {};
    }
    std::error_code error;
    const auto real = std::filesystem::canonical(path.c_str(), error);
    return error ? std::filesystem::path{path.c_str()} : real;
}

MacHost::MacHost()
    : home_{ProcessInfo::homeFolder()},
      applicationSupport_{ProcessInfo::applicationSupportFolder()} {}

Platform MacHost::platform() {
    return {clock_,      tools_,       kernel_, workspace_, networkLink_, windowServer_,
            loginItems_, preferences_, log_,    home_,      "/",          applicationSupport_,
            system};
}

} // namespace pacelet::Mac
