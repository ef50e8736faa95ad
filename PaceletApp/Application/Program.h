#pragma once

#include "Core/Platform/Platform.h"

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
    /// Whether the desktop asks for little motion. It may block, on any thread.
    std::function<bool()> prefersReducedMotion;
};

/// The frame of a program with a window.
class Program {
public:
    Program(int& argc, char** argv);

    /// Shows the main window on the machine behind `platform`, and lives on without it until the
    /// user ends the program. Gives the program's exit status.
    int run(const Platform& platform, const ProgramSurroundings& surroundings = {});

private:
    QApplication application_;
};

} // namespace pacelet
