#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// How an application shows itself: with windows and an icon, as an accessory, or not at all.
enum class ActivationPolicy { regular, accessory, prohibited };

/// One running application. A handle stays valid after the application has ended.
class RunningApplication {
public:
    virtual ~RunningApplication() = default;

    virtual std::optional<std::string> bundlePath() const = 0;
    virtual std::optional<std::string> bundleIdentifier() const = 0;
    virtual std::optional<std::string> executablePath() const = 0;
    virtual ActivationPolicy activationPolicy() const = 0;
    virtual bool isTerminated() const = 0;

    /// Whether `terminate` asks the application itself, so that it can have its user save; else it
    /// ends as it stands. Finding out may take a moment: any thread may call this.
    virtual bool canBeAsked() const { return true; }

    /// Asks the application to quit; it may ask its user to save first, or not react at all. False
    /// when the request could not be sent.
    virtual bool terminate() = 0;

    /// Ends the application without asking it. False when that was not possible.
    virtual bool forceTerminate() = 0;
};

/// A picture as a file holds it (PNG or SVG).
struct EncodedImage {
    std::vector<std::byte> bytes;
};

/// Keeps a registration alive; dropping it ends the registration.
using ObserverHandle = std::shared_ptr<void>;

/// The desktop: running applications, opening things, icons, sleep and wake. Belongs to the UI
/// thread, but for `isRunning`, `icon` and `asksBeforeRestart`, which any thread may call.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// The applications that run now, those of the user's desktop only.
    virtual std::vector<std::shared_ptr<RunningApplication>> runningApplications() = 0;

    /// True when at least one application with this bundle identifier runs.
    virtual bool isRunning(const std::string& bundleIdentifier) = 0;

    /// Opens a web address or a deep link in its handler; false when nothing here opens it.
    virtual bool openURL(const std::string& url) = 0;

    /// Path of the installed application with this bundle identifier.
    virtual std::optional<std::string> applicationPath(const std::string& bundleIdentifier) = 0;

    /// Starts the application at this path; whether it comes up is not waited for.
    virtual void openApplication(const std::string& path) = 0;

    /// Whether the user is asked once more by whoever restarts the machine. May take a moment.
    virtual bool asksBeforeRestart() { return true; }

    /// The icon of the application or file at `path`, about `size` pixels wide; nothing when there
    /// is no such file or it has no icon.
    virtual std::optional<EncodedImage> icon(const std::string& path, int size) = 0;

    /// Calls `willSleep` before the machine sleeps and `didWake` after it woke, on the UI thread,
    /// for as long as the handle lives.
    virtual ObserverHandle observeSleep(std::function<void()> willSleep,
                                        std::function<void()> didWake) = 0;
};

} // namespace pacelet
