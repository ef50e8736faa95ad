#include "Core/Inspectors/BackgroundItemsReader.h"

#include "Core/Inspectors/PropertyList.h"
#include "Core/Inspectors/PropertyListLimits.h"
#include "Core/Support/Files.h"
#include "Core/Support/Text.h"

#include <array>

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

} // namespace pacelet::BackgroundItemsReader
