#pragma once

// The desktop of the machine that the programs are built for.

#include "PaceletApp/Application/Program.h"
#include "programs/LiveHost.h"

#ifdef __APPLE__
#include "Hosts/Mac/Desktop.h"
#else
#include "Hosts/Linux/Browser/BridgeWire.h"
#include "Hosts/Linux/Desktop/Display.h"
#include "Hosts/Linux/Desktop/Wishes.h"
#endif

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace pacelet {

#ifdef __APPLE__

class LiveDesktop {
public:
    static constexpr std::string_view advice =
        "Log in at the screen of this Mac to see its window.";
    static constexpr std::string_view trayName = "menu bar";

    static std::optional<LiveDesktop> find() {
        return Mac::hasDesktop() ? std::optional<LiveDesktop>{LiveDesktop{}} : std::nullopt;
    }

    void tellQt() const {}

    static void isConnected() { Mac::wearDark(); }
};

class DesktopHost {
public:
    Platform platform() { return host_.platform(); }

    ProgramSurroundings surroundings() {
        ProgramSurroundings surroundings;
        surroundings.wishes = Mac::wishesOfDesktop;
        surroundings.showAbout = Mac::showAboutPanel;
        return surroundings;
    }

private:
    Mac::MacHost host_;
};

#else

/// A place for windows.
class LiveDesktop {
public:
    /// What somebody is told who is at none.
    static constexpr std::string_view advice =
        "Start pacelet in a desktop session to see its window, or under xvfb-run.";
    static constexpr std::string_view trayName = "system tray";

    /// Nothing where there is none.
    static std::optional<LiveDesktop> find() {
        auto display = Linux::chooseDisplay();
        return display ? std::optional{LiveDesktop{*std::move(display)}} : std::nullopt;
    }

    /// Before Qt connects to it. Where text is to be larger, all is drawn larger, so that nothing
    /// is cut: rows and buttons fit their texts.
    void tellQt() {
        tell("QT_QPA_PLATFORM", display_.plugin.c_str());
        if (display_.plugin.starts_with("wayland") &&
            qEnvironmentVariableIsEmpty("QT_SCALE_FACTOR")) {
            tell("QT_SCALE_FACTOR", QByteArray::number(Linux::textScaleOfDesktop()));
        }
    }

    /// Once Qt has. Programs that we start later are not told what was meant for ours.
    void isConnected() {
        for (const auto& [name, before] : told_) {
            before.isNull() ? qunsetenv(name) : qputenv(name, before);
        }
        display_.connection.reset();
    }

private:
    explicit LiveDesktop(Linux::ChosenDisplay display)
        : display_{std::move(display)} {}

    void tell(const char* name, const QByteArray& value) {
        told_.emplace_back(name, qgetenv(name));
        qputenv(name, value);
    }

    Linux::ChosenDisplay display_;
    std::vector<std::pair<const char*, QByteArray>> told_; ///< what the environment said before
};

/// This machine, for a program with a window. To be made once there is a QCoreApplication.
class DesktopHost {
public:
    DesktopHost() { host_.renewUserFiles(); }

    Platform platform() { return host_.platform(); }

    /// What the program has of the desktop. This outlives its run.
    ProgramSurroundings surroundings() {
        ProgramSurroundings surroundings;
        surroundings.wishes = [folder = settings_.configFolder] {
            return Linux::wishesOfDesktop(folder);
        };
        surroundings.stopLongTools = [this] { host_.stopLongTools(); };
        return surroundings;
    }

private:
    static Linux::LinuxSettings settings() {
        Linux::LinuxSettings settings;
        settings.postToUI = postToUI;
        settings.runtimeFolder = Linux::BridgeWire::standardFolder();
        return settings;
    }

    Linux::LinuxSettings settings_ = settings();
    Linux::LinuxHost host_{settings_};
};

#endif

} // namespace pacelet
