#include "Core/Fixes/FixRunner.h"

#include "Core/Fixes/AppleScript.h"
#include "Core/Sampling/SafetyGate.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <utility>

namespace pacelet {

namespace {

const std::string tidyvaultIdentifier = "app.tidyvault.Tidyvault";

} // namespace

RunningApplications FixRunner::runningCopies(const ProcessGroup& group) const {
    if (!group.appPath) {
        return {};
    }
    RunningApplications copies = workspace_.runningApplications();
    std::erase_if(copies, [&](const auto& copy) { return copy->bundlePath() != group.appPath; });
    return copies;
}

QuitAttempt FixRunner::quit(const ProcessGroup& group, bool force, Seconds timeout) const {
    RunningApplications copies = runningCopies(group);
    if (copies.empty()) {
        return QuitAttempt{FixOutcome::alreadyGone()};
    }
    const ProcessUsage& primary = group.primary();
    const auto mayQuit = [&](const auto& copy) {
        return SafetyGate::canQuit(primary.uid, currentUID_, copy->executablePath().value_or(""),
                                   primary.name, isUserApp(copy->activationPolicy()));
    };
    if (!std::ranges::all_of(copies, mayQuit)) {
        return QuitAttempt{FixOutcome::refused()};
    }
    for (const auto& copy : copies) {
        // Whether the request arrived is not asked: only that the application goes counts.
        force ? copy->forceTerminate() : copy->terminate();
    }
    return QuitAttempt{std::move(copies), timeout};
}

FixOutcome FixRunner::rebuildSpotlightIndex() const {
    return osascript(rebuildScript);
}

FixOutcome FixRunner::restartMac() const {
    return osascript(restartScript);
}

void FixRunner::open(SettingsPane pane) const {
    workspace_.openURL(std::string{rawValue(pane)});
}

void FixRunner::openTidyvault(const std::string& website) const {
    std::vector<std::string> identifiers{tidyvaultIdentifier};
    identifiers.insert(identifiers.end(), diskTools_.begin(), diskTools_.end());
    for (const std::string& identifier : identifiers) {
        if (const auto path = workspace_.applicationPath(identifier)) {
            workspace_.openApplication(*path);
            return;
        }
    }
    workspace_.openURL(website + "?ref=pacelet");
}

FixOutcome FixRunner::outcome(std::int32_t status, std::string_view standardError) {
    if (status == 0) {
        return FixOutcome::done();
    }
    if (const auto number = AppleScript::errorNumber(standardError)) {
        return FixOutcome::fromAppleScriptError(*number);
    }
    return FixOutcome::failed(std::string{trimmed(standardError)});
}

FixOutcome FixRunner::osascript(std::string_view script) const {
    try {
        const Shell::Output output = AppleScript::run(tools_, std::string{script});
        return outcome(output.status, output.stderr);
    } catch (const LaunchError&) {
        return FixOutcome::failed("osascript");
    }
}

} // namespace pacelet
