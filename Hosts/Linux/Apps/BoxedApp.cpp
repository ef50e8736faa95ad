#include "Hosts/Linux/Apps/BoxedApp.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/AppScope.h"
#include "Hosts/Linux/Apps/DesktopEntry.h"

#include <algorithm>
#include <array>
#include <utility>

namespace pacelet::Linux {

namespace {

BoxedApp boxNamed(BoxKind kind, std::string id, std::string_view name) {
    BoxedApp box;
    box.kind = kind;
    box.app.name = bundleName(id, name);
    if (box.app.name.empty()) {
        box.app.name = bundleName({}, id);
    }
    box.app.id = std::move(id);
    return box;
}

/// The name in the entry that every AppImage has at its top.
std::string nameInside(const std::string& folder) {
    constexpr std::size_t largestEntry = std::size_t{1} << 20;
    for (const std::string& file : sortedNames(folder)) {
        std::string text;
        if (!file.ends_with(".desktop") || readFile(joinedPath(folder, file), largestEntry, text)) {
            continue;
        }
        if (const auto entry = parseDesktopEntry(text); entry && !entry->name.empty()) {
            return entry->name;
        }
    }
    return {};
}

std::optional<BoxedApp> appImage(std::string_view executable) {
    constexpr std::string_view mounts = "/tmp/.mount_";
    constexpr std::size_t randomLength = 6;
    if (!executable.starts_with(mounts)) {
        return std::nullopt;
    }
    const std::string folder{executable.substr(0, executable.find('/', mounts.size()))};
    std::string name = nameInside(folder);
    if (name.empty() && folder.size() > mounts.size() + randomLength) {
        name = folder.substr(mounts.size(), folder.size() - mounts.size() - randomLength);
    }
    return name.empty() ? std::nullopt
                        : std::optional{boxNamed(BoxKind::package, "appimage:" + folder, name)};
}

bool isContainerID(std::string_view text) {
    constexpr std::size_t shortest = 12;
    return text.size() >= shortest && std::ranges::all_of(text, [](char character) {
               return (character >= '0' && character <= '9') ||
                      (character >= 'a' && character <= 'f');
           });
}

/// `parent` is the group around it: an id alone is a container's among those of its manager.
std::optional<BoxedApp> container(std::string_view parent, std::string_view group) {
    constexpr std::array<std::string_view, 4> idPrefixes{"docker-", "libpod-", "cri-containerd-",
                                                         "crio-"};
    struct Named {
        std::string_view prefix;
        std::string_view ending;
    };
    constexpr std::array<Named, 3> named{Named{"lxc.payload.", ""}, Named{"machine-", ".scope"},
                                         Named{"systemd-nspawn@", ".service"}};
    constexpr std::string_view scope = ".scope";
    constexpr std::size_t shownLength = 12;
    std::string_view name = group;
    if (name.ends_with(scope)) {
        name.remove_suffix(scope.size());
    }
    const bool isManaged =
        parent == "docker" || parent.starts_with("kubepods") || parent.starts_with("pod");
    std::string_view id = isManaged ? name : std::string_view{};
    for (const std::string_view prefix : idPrefixes) {
        if (name.starts_with(prefix)) {
            id = name.substr(prefix.size());
        }
    }
    if (isContainerID(id)) {
        const std::string shown{id.substr(0, shownLength)};
        return boxNamed(BoxKind::container, "container:" + shown, "Container " + shown);
    }
    for (const auto& [prefix, ending] : named) {
        const std::size_t around = prefix.size() + ending.size();
        if (group.starts_with(prefix) && group.ends_with(ending) && group.size() > around) {
            const std::string shown =
                unescapedUnit(group.substr(prefix.size(), group.size() - around));
            return boxNamed(BoxKind::container, "container:" + shown, "Container " + shown);
        }
    }
    return std::nullopt;
}

/// Of "app-flatpak-org.example.Thing-1234.scope" and "snap.thing.app-<uuid>.scope".
std::optional<BoxedApp> packaged(std::string_view group) {
    constexpr std::string_view flatpak = "app-flatpak-";
    constexpr std::string_view snap = "snap.";
    if (group.starts_with(flatpak)) {
        const std::string_view id = group.substr(flatpak.size(), group.rfind('-') - flatpak.size());
        return id.empty() || group.rfind('-') < flatpak.size()
                   ? std::nullopt
                   : std::optional{boxNamed(BoxKind::package, "flatpak:" + std::string{id},
                                            id.substr(id.rfind('.') + 1))};
    }
    const auto pieces = splitKeepingEmpty(group, '.');
    return group.starts_with(snap) && pieces.size() >= 3 && !pieces[1].empty()
               ? std::optional{boxNamed(BoxKind::package, "snap:" + std::string{pieces[1]},
                                        pieces[1])}
               : std::nullopt;
}

} // namespace

std::optional<BoxedApp> boxedApp(std::string_view executable, std::string_view cgroup) {
    if (auto image = appImage(executable)) {
        return image;
    }
    std::optional<BoxedApp> box;
    forEachLine(cgroup, [&](std::string_view line) {
        // The outermost counts: a container may run more of them.
        std::string_view parent;
        for (const std::string_view group : splitDroppingEmpty(line, '/')) {
            if (!box) {
                box = container(std::exchange(parent, group), group);
            }
            if (!box) {
                box = packaged(group);
            }
        }
    });
    return box;
}

bool isAppImageFile(std::string_view executable) {
    return asciiLowercased(executable).ends_with(".appimage");
}

} // namespace pacelet::Linux
