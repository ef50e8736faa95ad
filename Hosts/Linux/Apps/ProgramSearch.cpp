#include "Hosts/Linux/Apps/ProgramSearch.h"

#include <unistd.h>

namespace pacelet::Linux {

bool isExecutable(const std::string& path) {
    return ::access(path.c_str(), X_OK) == 0;
}

std::optional<std::string> findProgram(const std::string& name,
                                       std::span<const std::string> searchPath) {
    if (name.starts_with('/')) {
        return isExecutable(name) ? std::optional{name} : std::nullopt;
    }
    for (const std::string& folder : searchPath) {
        if (std::string path = folder + '/' + name; isExecutable(path)) {
            return path;
        }
    }
    return std::nullopt;
}

} // namespace pacelet::Linux
