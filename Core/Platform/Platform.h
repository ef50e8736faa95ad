#pragma once

#include "Core/Platform/BackgroundItemSource.h"
#include "Core/Platform/BrowserExtension.h"
#include "Core/Platform/Clock.h"
#include "Core/Platform/HostAbilities.h"
#include "Core/Platform/Kernel.h"
#include "Core/Platform/Log.h"
#include "Core/Platform/LoginItems.h"
#include "Core/Platform/NetworkLink.h"
#include "Core/Platform/OperatingSystem.h"
#include "Core/Platform/Preferences.h"
#include "Core/Platform/ProgramKnowledge.h"
#include "Core/Platform/ToolRunner.h"
#include "Core/Platform/WindowServer.h"
#include "Core/Platform/Workspace.h"

#include <string>

namespace pacelet {

/// Everything that a host gives, as one bundle of references. It is handed down explicitly; there
/// is no global one. The host outlives it.
struct Platform {
    Clock& clock;
    ToolRunner& tools;
    Kernel& kernel;
    Workspace& workspace;
    NetworkLink& networkLink;
    WindowServer& windowServer;
    LoginItems& loginItems;
    Preferences& preferences;
    Log& log;
    std::string home;               ///< the user's home folder, without a slash at its end
    std::string root;               ///< where "Applications" and "Library" stand: "/" on a Mac
    std::string applicationSupport; ///< folder of per-user application data
    OperatingSystem system = OperatingSystem::macOS;
    ProgramKnowledge* knowledge = nullptr; ///< null where the machine tells nothing of its programs
    BackgroundItemSource* backgroundItems = nullptr; ///< null where a Mac's folders tell all
    BrowserExtension* browserExtension = nullptr; ///< null where browsers take scripts themselves
    HostAbilities abilities{};
};

} // namespace pacelet
