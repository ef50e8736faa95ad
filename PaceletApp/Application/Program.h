#pragma once

#include "Core/Platform/Platform.h"

#include <QGuiApplication>

#include <filesystem>
#include <functional>

namespace pacelet {

/// Whether there is anything to show a window on.
bool hasDisplay();

/// The folder that the running program stands in.
std::filesystem::path programFolder();

/// Has a function called in a later turn of the UI thread. Any thread.
void postToUI(std::function<void()> function);

/// The frame of a program with a window.
class Program {
public:
    Program(int& argc, char** argv);

    /// Shows the main window on the machine behind `platform` until the user ends the program.
    /// Gives the program's exit status.
    int run(const Platform& platform);

private:
    QGuiApplication application_;
};

} // namespace pacelet
