#pragma once

#include "Core/Platform/Log.h"
#include "Core/Platform/LoginItems.h"
#include "Core/Platform/NetworkLink.h"
#include "Hosts/Simulated/Model/Agenda.h"
#include "Hosts/Simulated/Model/Application.h"
#include "Hosts/Simulated/Model/Browser.h"
#include "Hosts/Simulated/Model/Failure.h"
#include "Hosts/Simulated/Model/Hardware.h"
#include "Hosts/Simulated/Model/ProcessTable.h"
#include "Hosts/Simulated/Model/VirtualTime.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace pacelet::Simulated {

/// What the kernel says of the machine as a whole.
struct Vitals {
    std::int32_t pressureLevel = 1; ///< 1 normal, 2 warn, 4 critical
    std::int64_t swapUsed = 0;
    int thermalState = 0; ///< 0 nominal to 3 critical
    std::int64_t diskFree = 0;
    bool lowPower = false;
    TimePoint bootTime{};
};

struct WiFi {
    std::int64_t rssi = -52;
    std::int64_t noise = -92;
    double transmitRate = 866;
    std::optional<int> band = 2; ///< as `WiFiInterface::channelBand`
};

/// What a speed test measures.
struct Line {
    double downloadBitsPerSecond = 0;
    double uploadBitsPerSecond = 0;
    std::optional<double> responsiveness; ///< round trips per minute
    std::optional<double> baseRTT;        ///< milliseconds
};

/// Bytes per second of one process.
struct Traffic {
    std::int32_t pid = 0;
    std::int64_t in = 0;
    std::int64_t out = 0;
};

struct Network {
    std::optional<WiFi> wifi = WiFi{};
    NetworkPath path{true, true, false};
    Line line{412e6, 38e6, 812, 14.5};
    std::vector<Traffic> traffic;
    bool isExpensive = false;
};

struct Display {
    std::uint32_t id = 0;
    std::int64_t currentWidth = 0;
    std::vector<std::int64_t> modeWidths;
};

struct ScreenWindow {
    std::int32_t pid = 0;
    std::string owner;
    std::int64_t layer = 0; ///< 0 for normal windows
};

/// A job of the user's launchd, as its list shows it.
struct LaunchJob {
    std::string label;
    std::string program; ///< path of the process that runs for it
};

/// Where a launch item is defined.
enum class LaunchFolder { userAgents, systemAgents, systemDaemons, inApplication, loginItem };

/// How the file of a property list is written.
enum class PlistFormat { xml, binary };

struct LaunchItem {
    LaunchFolder folder = LaunchFolder::userAgents;
    std::string label;
    std::string program;     ///< relative to the application for one inside it
    std::string application; ///< name of the bundle that carries it
    bool runAtLoad = true;
    bool keepAlive = false;
    PlistFormat format = PlistFormat::xml;
};

/// One folder of the user that Spotlight would index.
struct LargeFolder {
    std::string path; ///< relative to the home folder
    std::int64_t bytes = 0;
};

/// One stretch of the usage history that is found on the disk.
struct PastUsage {
    int days = 0;
    double idleLoad = 0;
    double busyLoad = 0;
    double busyShare = 0;     ///< of the minutes
    double pressureShare = 0; ///< of the minutes
    std::int64_t swap = 0;
    std::int64_t memoryUsed = 0;
};

struct LogMessage {
    LogLevel level = LogLevel::information;
    std::string subsystem;
    std::string category;
    std::string message;

    bool operator==(const LogMessage&) const = default;
};

/// An application was asked to end, or ended by force.
struct QuitRequest {
    std::string path; ///< of its bundle
    bool force = false;
};

/// What was done to the machine, for those who watch it.
struct Records {
    std::map<std::string, std::int64_t> toolCalls; ///< by the tool's path
    std::vector<std::string> lastArguments;        ///< of the last tool
    Seconds lastCallDuration{0};
    std::vector<std::string> openedURLs;
    std::vector<std::string> openedApplications;
    std::vector<QuitRequest> quits;
    std::int64_t closedTabs = 0; ///< by scripts
    std::vector<LogMessage> log;
    std::int64_t indexRebuilds = 0;
    std::int64_t restartRequests = 0;
    std::int64_t hungCalls = 0; ///< that wait right now
};

/// The whole state of the simulated Mac. `Machine` guards it.
struct World {
    std::uint64_t seed = 0;
    Hardware hardware = macBookAirM2;
    VirtualTime time;
    Agenda events;
    Failures failures;
    Records records;

    ProcessTable processes;
    std::vector<InstalledApp> installed;
    std::vector<RunningApp> running;
    int lastAppNumber = 0;
    std::map<std::string, Browser> browsers; ///< by bundle identifier; those that run
    Vitals vitals;
    Network network;
    std::vector<Display> displays;
    std::vector<ScreenWindow> windows; ///< front to back
    std::vector<LaunchJob> jobs;
    LoginItemStatus loginItem = LoginItemStatus::notRegistered;

    std::vector<LaunchItem> launchItems;
    std::vector<LargeFolder> largeFolders;
    std::optional<PastUsage> pastUsage;
    std::map<std::string, std::variant<bool, std::string>, std::less<>> preferences;

    Seconds uptime() const { return time.wall - vitals.bootTime; }
};

/// Lets virtual time pass and what falls due in it happen, in order.
void passTime(World& world, Seconds span);

/// Starts the application; it is frontmost then.
RunningApp& launch(World& world, const InstalledApp& bundle);

RunningApp* findRunning(World& world, int number);

const InstalledApp* findInstalled(const World& world, std::string_view bundleIdentifier);

/// Asks the application to quit; false when it does not run.
bool requestQuit(World& world, int number);

/// Ends the application unless nothing can; false when it does not run.
bool forceQuit(World& world, int number);

/// Ends it at once: its processes, windows, tabs and traffic are gone.
void endApplication(World& world, int number);

} // namespace pacelet::Simulated
