#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Support/Precondition.h"

#include <string>
#include <string_view>

// No job without a label, and none with a tab or a line feed in it; the same goes for the owner
// search over whatever the labels are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    BackgroundItemsReader::InstalledApps installed;
    for (const auto& [label, pid] : BackgroundItemsReader::parseLaunchctlList(text)) {
        precondition(!label.empty() && label.find_first_of("\t\n") == std::string::npos,
                     "a label holds a separator");
        installed.emplace(label, "App");
    }
    for (const auto& [label, name] : installed) {
        BackgroundItemsReader::ownerApp(label, label, installed);
    }
    return 0;
}
