#pragma once

#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Platform/DesktopWishes.h"
#include "Core/Platform/Platform.h"
#include "PaceletApp/Application/QuitSignals.h"

#include <QApplication>
#include <QQmlEngine>

#include <filesystem>
#include <functional>
#include <memory>

namespace pacelet {

class Scheduler;
class SingleInstance;

/// Where the resources of a program in this folder stand: those of a Mac's application in its
/// bundle, all others beside it.
ResourceLocations resourcesOf(const std::filesystem::path& programFolder);

/// Those of the running program. Once there is a QCoreApplication.
ResourceLocations ownResources();

/// Has a function called in a later turn of the UI thread. Any thread.
void postToUI(std::function<void()> function);

/// What a program has to do with besides the machine; each may be missing.
struct ProgramSurroundings {
    SingleInstance* instance = nullptr; ///< tells of further starts
    /// What the desktop asks of its programs. It may block, on any thread.
    std::function<DesktopWishes()> wishes;
    /// Ends tools that would go on for long; called once the user has ended the program.
    std::function<void()> stopLongTools{};
    /// Tells of the program, for the menu bar of an application.
    std::function<void()> showAbout{};
};

/// The frame of a program with a window.
class Program {
public:
    /// How a program begins: with its window, or in the tray alone.
    enum class Beginning { shown, hidden };

    /// Connects to the windowing system. Where that cannot be used, the program ends here, with a
    /// line that says so. Throws `std::runtime_error` where the system gives it no thread.
    Program(int& argc, char** argv, Beginning beginning = Beginning::shown);

    /// Shows the main window, if it is not to be hidden, on the machine behind `platform`, and
    /// lives on without it until the user ends the program, by a signal maybe. Gives the program's
    /// exit status.
    int run(const Platform& platform, const ProgramSurroundings& surroundings = {});

private:
    int runUntilQuit(const Platform& platform, Scheduler& scheduler,
                     const ProgramSurroundings& surroundings);

    Beginning beginning_;
    QApplication application_;
    std::unique_ptr<QQmlEngine> engine_; ///< until the window has it
    QuitSignals quitSignals_;
};

} // namespace pacelet
