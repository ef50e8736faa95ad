#include "Core/Inspectors/BackgroundItemsReader.h"

#include "Core/Inspectors/PropertyList.h"
#include "Core/Inspectors/PropertyListLimits.h"
#include "Core/Support/Files.h"
#include "Core/Support/Text.h"

#include <array>
#include <string_view>
#include <unordered_map>

namespace pacelet::BackgroundItemsReader {

namespace {

/// One application in the Applications folder.
struct App {
    std::string path;
    std::string name;
};

/// The paths of the entries of `folder` that have this extension.
std::vector<std::string> entries(const std::string& folder, std::string_view extension) {
    std::vector<std::string> paths = sortedNames(folder);
    std::erase_if(paths, [&](const std::string& name) { return pathExtension(name) != extension; });
    for (std::string& each : paths) {
        each = joinedPath(folder, each);
    }
    return paths;
}

std::string nameOfApp(std::string_view path) {
    return repairedUTF8(std::string{withoutExtension(lastPathComponent(path))});
}

/// Reads one scan's files through one buffer.
class Scanner {
public:
    std::vector<App> apps(const std::string& root) {
        std::vector<App> found;
        for (std::string& path : entries(joinedPath(root, "Applications"), "app")) {
            App& app = found.emplace_back();
            app.name = nameOfApp(path);
            app.path = std::move(path);
        }
        return found;
    }

    InstalledApps identifiers(const std::vector<App>& apps) {
        InstalledApps installed;
        for (const App& app : apps) {
            const auto info = bundleInfo(app.path);
            if (auto identifier = info ? info->string("CFBundleIdentifier") : std::nullopt) {
                installed.insert_or_assign(*std::move(identifier), app.name);
            }
        }
        return installed;
    }

    std::vector<BackgroundItem> plists(const std::string& folder, ItemScope scope,
                                       const std::optional<std::string>& bundleRoot) {
        std::vector<BackgroundItem> items;
        for (const std::string& path : entries(folder, "plist")) {
            if (readFile(path, PropertyListLimits::largestFile, bytes_)) {
                continue;
            }
            if (auto item = parse(bytes_, repairedUTF8(path), scope, bundleRoot)) {
                items.push_back(*std::move(item));
            }
        }
        return items;
    }

    std::vector<BackgroundItem> loginItems(const std::string& folder) {
        std::vector<BackgroundItem> items;
        for (const std::string& path : entries(folder, "app")) {
            const auto info = bundleInfo(path);
            auto identifier = info ? info->string("CFBundleIdentifier") : std::nullopt;
            if (!identifier) {
                continue;
            }
            BackgroundItem& item = items.emplace_back();
            item.label = *std::move(identifier);
            item.source = repairedUTF8(path);
            item.scope = ItemScope::appBundled;
            item.runAtLoad = true;
            if (const auto executable = info->string("CFBundleExecutable")) {
                item.program = joinedPath(item.source, "Contents/MacOS/" + *executable);
            }
        }
        return items;
    }

private:
    std::optional<PropertyList> bundleInfo(const std::string& bundle) {
        if (readFile(joinedPath(bundle, "Contents/Info.plist"), PropertyListLimits::largestFile,
                     bytes_)) {
            return std::nullopt;
        }
        return PropertyList::parse(bytes_);
    }

    std::string bytes_;
};

/// Moves `added` to the end of `items`, all as belonging to `owner`.
void appendOwned(std::vector<BackgroundItem>& items, std::vector<BackgroundItem> added,
                 const std::string& owner) {
    for (BackgroundItem& item : added) {
        item.ownerApp = owner;
        items.push_back(std::move(item));
    }
}

} // namespace

std::vector<BackgroundItem> scan(const std::string& home, const std::string& root) {
    Scanner scanner;
    const std::vector<App> apps = scanner.apps(root);
    const InstalledApps installed = scanner.identifiers(apps);

    struct Folder {
        std::string path;
        ItemScope scope;
    };
    const std::array<Folder, 3> folders{{
        {joinedPath(home, "Library/LaunchAgents"), ItemScope::userAgent},
        {joinedPath(root, "Library/LaunchAgents"), ItemScope::systemAgent},
        {joinedPath(root, "Library/LaunchDaemons"), ItemScope::systemDaemon},
    }};
    std::vector<BackgroundItem> items;
    for (const Folder& folder : folders) {
        for (BackgroundItem& item : scanner.plists(folder.path, folder.scope, std::nullopt)) {
            item.ownerApp = ownerApp(item.program, item.label, installed);
            items.push_back(std::move(item));
        }
    }
    for (const App& app : apps) {
        const std::string base = joinedPath(app.path, "Contents/Library");
        const std::string bundleRoot = repairedUTF8(app.path);
        for (const char* folder : {"LaunchAgents", "LaunchDaemons"}) {
            appendOwned(items,
                        scanner.plists(joinedPath(base, folder), ItemScope::appBundled, bundleRoot),
                        app.name);
        }
        appendOwned(items, scanner.loginItems(joinedPath(base, "LoginItems")), app.name);
    }
    return items;
}

std::optional<BackgroundItem> parse(std::string_view plist, const std::string& source,
                                    ItemScope scope, const std::optional<std::string>& bundleRoot) {
    const auto job = PropertyList::parse(plist);
    auto label = job ? job->string("Label") : std::nullopt;
    if (!label) {
        return std::nullopt;
    }
    BackgroundItem item;
    item.label = *std::move(label);
    item.source = source;
    item.scope = scope;
    item.program = job->string("Program");
    if (const auto relative = job->string("BundleProgram");
        !item.program && bundleRoot && relative) {
        item.program = *bundleRoot + "/" + *relative;
    }
    if (!item.program) {
        item.program = job->firstString("ProgramArguments");
    }
    // Conditions count as a wish to be kept alive, whatever they say.
    item.keepAlive = job->boolean("KeepAlive").value_or(job->isDictionary("KeepAlive"));
    item.runAtLoad = job->boolean("RunAtLoad").value_or(false);
    return item;
}

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

/// How many of `parts` a name of parts joined by dots begins with, whole ones in their order.
std::size_t sharedParts(const std::vector<std::string_view>& parts, std::string_view name) {
    std::size_t shared = 0;
    for (const std::string_view part : parts) {
        while (name.starts_with('.')) {
            name.remove_prefix(1);
        }
        if (!name.starts_with(part)) {
            break;
        }
        name.remove_prefix(part.size());
        if (!name.empty() && name.front() != '.') {
            break;
        }
        ++shared;
    }
    return shared;
}

std::optional<std::string> ownerByLabel(std::string_view label, const InstalledApps& installed) {
    // Two parts are a vendor's prefix, such as com.vendor; less says nothing.
    std::size_t most = 1;
    const std::string* owner = nullptr;
    const auto parts = splitDroppingEmpty(label, '.');
    for (const auto& [identifier, name] : installed) {
        if (const std::size_t shared = sharedParts(parts, identifier); shared > most) {
            most = shared;
            owner = &name;
        }
    }
    return owner != nullptr ? std::optional{*owner} : std::nullopt;
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

std::vector<BackgroundItem> markRunning(std::vector<BackgroundItem> items,
                                        const RunningJobs& launchctl,
                                        const std::vector<ProcessSample>& processes) {
    std::unordered_map<std::string_view, std::int32_t> pids;
    pids.reserve(processes.size());
    for (const ProcessSample& process : processes) {
        pids.try_emplace(process.path, process.pid);
    }
    for (BackgroundItem& item : items) {
        item.pid.reset();
        if (const auto job = launchctl.find(item.label); job != launchctl.end()) {
            item.pid = job->second;
        } else if (item.program) {
            const auto process = pids.find(*item.program);
            if (process != pids.end()) {
                item.pid = process->second;
            }
        }
    }
    return items;
}

} // namespace pacelet::BackgroundItemsReader
