#pragma once

#include "Core/Fixes/FixOutcome.h"
#include "Core/Fixes/QuitAttempt.h"
#include "Core/Platform/Platform.h"
#include "Core/Platform/SettingsPane.h"
#include "Core/Sampling/ProcessGroup.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pacelet {

/// The only component that changes the machine. It asks nobody and words nothing: whoever calls it
/// has confirmed the step with the user and reports the outcome. Nothing here throws. Belongs to
/// the UI thread, but for the two operations that say otherwise.
class FixRunner {
public:
    static constexpr std::string_view rebuildScript =
        "do shell script \"/usr/bin/mdutil -E /\" with administrator privileges";
    /// The system's own restart request, which shows the usual confirmation.
    static constexpr std::string_view restartScript =
        "tell application \"loginwindow\" to «event aevtrrst»";

    /// Acts as the user that the program runs as.
    explicit FixRunner(const Platform& platform)
        : FixRunner{platform.workspace, platform.tools, platform.kernel.getuid(),
                    platform.abilities.diskTools} {}

    /// `diskTools` are the applications of `HostAbilities`.
    FixRunner(Workspace& workspace, ToolRunner& tools, std::uint32_t currentUID,
              std::vector<std::string> diskTools = {})
        : workspace_{workspace},
          tools_{tools},
          currentUID_{currentUID},
          diskTools_{std::move(diskTools)} {}

    std::uint32_t currentUID() const { return currentUID_; }

    /// Asks every running copy of the group's application to quit, or ends them all when `force`
    /// is set. The safety gate is asked first for all of them, and when it refuses one, none is
    /// touched. `timeout` is how long the attempt waits for them to go.
    QuitAttempt quit(const ProcessGroup& group, bool force, Seconds timeout) const;

    /// These two block while the system's prompt is up: for a background thread. They touch nothing
    /// but the tool runner.
    FixOutcome rebuildSpotlightIndex() const;
    FixOutcome restartMac() const;

    /// The running copies of the group's application; none of a lone process. Any thread may ask
    /// them whether they can be asked to quit.
    RunningApplications runningCopies(const ProcessGroup& group) const;

    /// Whether the user is asked once more before the machine restarts: for a background thread.
    bool asksBeforeRestart() const { return workspace_.asksBeforeRestart(); }

    /// Opens a page of the system's settings.
    void open(SettingsPane pane) const;

    /// Starts the sibling application or, when it is not installed, what this machine has in its
    /// place; opens its `website` when there is neither.
    void openTidyvault(const std::string& website) const;

    /// What a script run's exit status and error output mean.
    static FixOutcome outcome(std::int32_t status, std::string_view standardError);

    /// True for every application that may show itself to the user.
    static bool isUserApp(ActivationPolicy policy) {
        return policy != ActivationPolicy::prohibited;
    }

private:
    FixOutcome osascript(std::string_view script) const;

    Workspace& workspace_;
    ToolRunner& tools_;
    std::uint32_t currentUID_;
    std::vector<std::string> diskTools_;
};

} // namespace pacelet
