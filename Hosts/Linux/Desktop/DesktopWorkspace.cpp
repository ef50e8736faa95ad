#include "Hosts/Linux/Desktop/DesktopWorkspace.h"

#include "Core/Support/Files.h"
#include "Hosts/Linux/Apps/ExecLine.h"
#include "Hosts/Linux/Apps/ProgramSearch.h"
#include "Hosts/Linux/Desktop/AppInstances.h"
#include "Hosts/Linux/Desktop/BundleIdentifiers.h"
#include "Hosts/Linux/Desktop/DetachedProgram.h"
#include "Hosts/Linux/Desktop/SettingsPanels.h"
#include "Hosts/Linux/Systemd/SleepWatcher.h"

#include <algorithm>
#include <cstring>
#include <unistd.h>
#include <utility>

namespace pacelet::Linux {

namespace {

constexpr std::size_t mostIconBytes = 1 << 24;

bool isWebAddress(const std::string& url) {
    return url.starts_with("https://") || url.starts_with("http://");
}

/// The application that appears as `bundle`; of several entries for one program the plainest.
const DesktopApp* appOfBundle(const DesktopIndex& index, const std::string& bundle) {
    const DesktopApp* found = nullptr;
    for (const DesktopApp& app : index.apps()) {
        if (bundlePath(app) == bundle &&
            (found == nullptr || app.argumentCount < found->argumentCount)) {
            found = &app;
        }
    }
    return found;
}

} // namespace

DesktopWorkspace::DesktopWorkspace(Settings settings, PSTool& processes)
    : settings_{std::move(settings)},
      processes_{processes},
      proc_{std::make_shared<const FolderReader>(settings_.procFolder)},
      catalog_{settings_.places} {}

std::vector<std::shared_ptr<RunningApplication>> DesktopWorkspace::runningApplications() {
    std::vector<std::shared_ptr<RunningApplication>> copies;
    for (AppInstance& instance : appInstances(processes_.appProcesses(::getuid()))) {
        copies.push_back(
            std::make_shared<RunningCopy>(std::move(instance), proc_, settings_.closeWindows));
    }
    return copies;
}

bool DesktopWorkspace::isRunning(const std::string& identifier) {
    const std::vector<AppProcess> processes = processes_.appProcesses(::getuid());
    return std::any_of(processes.begin(), processes.end(), [&](const AppProcess& process) {
        return bundleIdentifier(process.appID) == identifier;
    });
}

bool DesktopWorkspace::openURL(const std::string& url) {
    if (isWebAddress(url)) {
        return startFirst({{"xdg-open", url}, {"gio", "open", url}});
    }
    return startFirst(settingsCommands(url, settings_.places.desktops));
}

std::optional<std::string> DesktopWorkspace::applicationPath(const std::string& identifier) {
    const auto apps = index();
    const auto found =
        std::find_if(apps->apps().begin(), apps->apps().end(),
                     [&](const DesktopApp& app) { return bundleIdentifier(app.id) == identifier; });
    return found == apps->apps().end() ? std::nullopt : std::optional{bundlePath(*found)};
}

void DesktopWorkspace::openApplication(const std::string& path) {
    const auto entry = entryOf(path);
    if (!entry) {
        return;
    }
    std::vector<std::string> command = splitExecLine(entry->exec);
    const auto program =
        command.empty() ? std::nullopt : findProgram(command.front(), settings_.places.searchPath);
    if (program) {
        command.front() = *program;
        startDetached(command, entry->path);
    }
}

std::optional<EncodedImage> DesktopWorkspace::icon(const std::string& path, int size) {
    const auto entry = entryOf(path);
    const auto file = entry ? findIcon(settings_.icons, entry->icon, size) : std::nullopt;
    std::string bytes;
    if (!file || readFile(*file, mostIconBytes, bytes) || bytes.empty()) {
        return std::nullopt;
    }
    EncodedImage image;
    image.bytes.resize(bytes.size());
    std::memcpy(image.bytes.data(), bytes.data(), bytes.size());
    return image;
}

ObserverHandle DesktopWorkspace::observeSleep(std::function<void()> willSleep,
                                              std::function<void()> didWake) {
    return std::make_shared<SleepWatcher>(settings_.postToUI, std::move(willSleep),
                                          std::move(didWake));
}

std::shared_ptr<const DesktopIndex> DesktopWorkspace::index() {
    const std::lock_guard lock{catalogMutex_};
    return catalog_.current();
}

std::optional<DesktopEntry> DesktopWorkspace::entryOf(const std::string& bundle) {
    const auto apps = index();
    const DesktopApp* app = appOfBundle(*apps, bundle);
    const auto file = app != nullptr ? findEntryFile(settings_.places, app->id) : std::nullopt;
    std::string text;
    if (!file || readFile(*file, mostEntryBytes, text)) {
        return std::nullopt;
    }
    return parseDesktopEntry(text);
}

bool DesktopWorkspace::startFirst(const std::vector<std::vector<std::string>>& commands) const {
    return std::any_of(commands.begin(), commands.end(), [&](std::vector<std::string> command) {
        const auto program = findProgram(command.front(), settings_.places.searchPath);
        if (!program) {
            return false;
        }
        command.front() = *program;
        return startDetached(command);
    });
}

} // namespace pacelet::Linux
