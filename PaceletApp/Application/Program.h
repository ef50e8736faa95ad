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

/// The frame of a program with a window.
class Program {
public:
    Program(int& argc, char** argv);

    /// Shows the main window on the machine behind `platform`, and lives on without it until the
    /// user ends the program. `instance`, which may be null, tells of further starts. Gives the
    /// program's exit status.
    int run(const Platform& platform, SingleInstance* instance);

private:
    QApplication application_;
};

} // namespace pacelet
