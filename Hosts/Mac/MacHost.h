#pragma once

#include "Core/Platform/Platform.h"
#include "Hosts/Mac/MacClock.h"
#include "Hosts/Mac/MacKernel.h"
#include "Hosts/Mac/MacLog.h"
#include "Hosts/Mac/MacLoginItems.h"
#include "Hosts/Mac/MacNetworkLink.h"
#include "Hosts/Mac/MacPreferences.h"
#include "Hosts/Mac/MacWindowServer.h"
#include "Hosts/Mac/MacWorkspace.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Mac {

/// The Mac's own tools.
class MacToolRunner final : public ToolRunner {
public:
    Shell::Output run(const std::string& executable,
                      const std::vector<std::string>& arguments) override;
};

/// The running program's file.
std::filesystem::path ownProgram();

/// This machine, live. Owns the services that Core asks; the references live as long as it does.
class MacHost {
public:
    static constexpr OperatingSystem system = OperatingSystem::macOS;

    MacHost();

    Clock& clock() { return clock_; }

    /// Nothing to tell: which application a process belongs to stands in its path.
    static std::optional<std::string_view> whyThere(std::int32_t, const std::string&) {
        return std::nullopt;
    }

    Platform platform();

private:
    MacClock clock_;
    MacToolRunner tools_;
    MacKernel kernel_;
    MacWorkspace workspace_;
    MacNetworkLink networkLink_;
    MacWindowServer windowServer_;
    MacLoginItems loginItems_;
    MacPreferences preferences_;
    MacLog log_;
    std::string home_;
    std::string applicationSupport_;
};

} // namespace pacelet::Mac
