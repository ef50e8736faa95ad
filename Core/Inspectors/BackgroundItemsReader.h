#pragma once

#include "Core/Platform/BackgroundItem.h"
#include "Core/Platform/ProcessSample.h"
#include "Core/Sampling/LaunchctlList.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What is set up to run in the background: launch agents and daemons in their usual folders, and
/// those that applications carry inside. Nothing here reports an error: what cannot be read is
/// left out.
namespace pacelet::BackgroundItemsReader {

/// Names of the installed applications by bundle identifier.
using InstalledApps = std::map<std::string, std::string>;

/// Reads the folders of a user and of the machine: first the launch folders, then what each
/// application carries, folder entries always by name in byte order. Nothing is filtered or merged,
/// and `pid` is absent. `root` is where "Applications" and "Library" stand. Reads many files, so
/// never on the UI thread.
std::vector<BackgroundItem> scan(const std::string& home, const std::string& root);

/// The job that a property list (XML or binary) defines; nothing without a label. A program given
/// relative to its bundle needs `bundleRoot`, the path of the application around it. `ownerApp` and
/// `pid` stay absent.
std::optional<BackgroundItem> parse(std::string_view plist, const std::string& source,
                                    ItemScope scope, const std::optional<std::string>& bundleRoot);

/// The name of the application that a job belongs to: by the place of its program when that lies
/// in an application of the user's, else by the installed application with which its label shares
/// most leading parts, at least two, else by an application that the program lies in elsewhere.
std::optional<std::string> ownerApp(const std::optional<std::string>& program,
                                    std::string_view label, const InstalledApps& installed);

using pacelet::parseLaunchctlList;
using pacelet::RunningJobs;

/// The items with `pid` filled in: by label, else by a process that runs just the item's program
/// (the first of them).
std::vector<BackgroundItem> markRunning(std::vector<BackgroundItem> items,
                                        const RunningJobs& launchctl,
                                        const std::vector<ProcessSample>& processes);

} // namespace pacelet::BackgroundItemsReader
