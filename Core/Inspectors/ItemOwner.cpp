#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Support/Text.h"

namespace pacelet::BackgroundItemsReader {

namespace {

constexpr std::string_view appSuffix = ".app";

/// The path of the outermost application bundle that `program` lies in, or is.
std::optional<std::string_view> enclosingBundle(std::string_view program) {
    const std::size_t inside = program.find(".app/");
    if (inside != std::string_view::npos) {
        return program.substr(0, inside + appSuffix.size());
    }
    return program.ends_with(appSuffix) ? std::optional{program} : std::nullopt;
}

/// Cuts the first part off a name whose parts are joined by dots; empty at its end.
std::string_view takePart(std::string_view& name) {
    name.remove_prefix(std::min(name.find_first_not_of('.'), name.size()));
    const std::string_view part = name.substr(0, name.find('.'));
    name.remove_prefix(part.size());
    return part;
}

/// How many parts two names have in common before they first differ.
int sharedParts(std::string_view left, std::string_view right) {
    int shared = 0;
    for (;;) {
        const std::string_view part = takePart(left);
        if (part.empty() || part != takePart(right)) {
            return shared;
        }
        ++shared;
    }
}

std::optional<std::string> ownerByLabel(std::string_view label, const InstalledApps& installed) {
    // A vendor's prefix, such as com.vendor.
    int most = 1;
    std::optional<std::string> owner;
    for (const auto& [identifier, name] : installed) {
        if (const int shared = sharedParts(label, identifier); shared > most) {
            most = shared;
            owner = name;
        }
    }
    return owner;
}

} // namespace

std::optional<std::string> ownerApp(const std::optional<std::string>& program,
                                    std::string_view label, const InstalledApps& installed) {
    std::optional<std::string> fallback;
    if (const auto bundle = program ? enclosingBundle(*program) : std::nullopt) {
        fallback = std::string{withoutExtension(lastPathComponent(*bundle))};
        if (bundle->starts_with("/Applications/") ||
            bundle->find("/Users/") != std::string_view::npos) {
            return fallback;
        }
    }
    auto owner = ownerByLabel(label, installed);
    return owner ? owner : fallback;
}

} // namespace pacelet::BackgroundItemsReader
