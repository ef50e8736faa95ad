#include "Core/Sampling/ProcessGroup.h"

#include "Core/Support/Precondition.h"

#include <algorithm>
#include <string_view>

namespace pacelet {

namespace {

constexpr std::string_view executableFolder = "/Contents/MacOS/";

/// Whether `path`, which begins with the bundle's, is an executable right in the bundle's
/// executable folder, not in one below it.
bool isMainExecutable(std::string_view path, std::string_view appPath) {
    const std::string_view folder = path.substr(0, path.rfind('/') + 1);
    return folder.size() == appPath.size() + executableFolder.size() &&
           folder.ends_with(executableFolder);
}

} // namespace

const ProcessUsage& ProcessGroup::primary() const {
    precondition(!members.empty(), "a process group has no members");
    if (appPath) {
        const auto main = std::ranges::find_if(members, [this](const ProcessUsage& member) {
            return isMainExecutable(member.path, *appPath);
        });
        if (main != members.end()) {
            return *main;
        }
    }
    return *std::ranges::max_element(members, {}, &ProcessUsage::cpuPercent);
}

} // namespace pacelet
