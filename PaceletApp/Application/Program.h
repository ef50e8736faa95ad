#pragma once

#include "Core/Platform/DesktopWishes.h"
#include "Core/Platform/Platform.h"
#include "PaceletApp/Application/QuitSignals.h"

#include <QApplication>

#include <filesystem>
#include <functional>

namespace pacelet {

class SingleInstance;

/// The folder that the running program stands in.
std::filesystem::path programFolder();

/// Has a function called in a later turn of the UI thread. Any thread.
void postToUI(std::function<void()> function);

/// What a program has to do with besides the machine; each may be missing.
struct ProgramSurroundings {
    SingleInstance* instance = nullptr; ///< tells of further starts
    /// What the desktop asks of its programs. It may block, on any thread.
    std::function<DesktopWishes()> wishes;
    /// Ends tools that would go on for long; called once the user has ended the program.
    std::function<void()> stopLongTools{};
    bool isHidden = false; ///< begins in the tray, without the main window
};

/// The frame of a program with a window.
class Program {
public:
    /// Connects to the windowing system. Where that cannot be used, the program ends here, with a
    /// line that says so. Throws `std::runtime_error` where the system gives it no thread.
    Program(int& argc, char** argv);

    /// Shows the main window, if it is not to be hidden, on the machine behind `platform`, and
    /// lives on without it until the user ends the program, by a signal maybe. Gives the program's
    /// exit status.
    int run(const Platform& platform, const ProgramSurroundings& surroundings = {});

private:
    QApplication application_;
    QuitSignals quitSignals_;
};

} // namespace pacelet
