#include "PaceletApp/BrowserPanel/BrowserTexts.h"

#include "Core/Sampling/Format.h"
#include "PaceletApp/Support/Sentence.h"

#include <fmt/format.h>

#include <algorithm>

namespace pacelet::BrowserTexts {

namespace {

constexpr std::size_t tabsNamed = 5;

std::string profileName(const std::optional<std::string>& profile) {
    return profile.value_or("Default profile");
}

/// What is still to be done where browsers show tabs to extensions alone.
Message steps(ExtensionSetup setup, std::string_view app, const std::string& folder) {
    switch (setup) {
    case ExtensionSetup::unknown:
        return {fmt::format("{} shows its tabs only to extensions.", app),
                fmt::format("Pacelet brings one. It talks to Pacelet on this computer alone, reads "
                            "no pages, and never sees incognito windows.\n\n"
                            "First, {0} has to know Pacelet: one small file in {0}'s settings "
                            "folder tells it. Then you add the extension. Nothing is written "
                            "before you agree.",
                            app)};
    case ExtensionSetup::registered:
        return {fmt::format("Add Pacelet's extension to {}.", app),
                fmt::format("1.  In {}, open the page chrome://extensions.\n"
                            "2.  Turn on Developer mode.\n"
                            "3.  Press Load unpacked, and choose this folder:\n"
                            "     {}\n\n"
                            "Pacelet goes on by itself once the extension is there. That may take "
                            "a few minutes if it was there before.",
                            app, folder)};
    case ExtensionSetup::provided:
        break;
    }
    return {fmt::format("Start {} again.", app),
            fmt::format("Pacelet's extension is installed, and {0} takes it up when it starts. "
                        "Close {0} and open it again: Pacelet then goes on by itself.",
                        app)};
}

std::string_view tabNoun(std::size_t count) {
    return count == 1 ? "tab" : "tabs";
}

} // namespace

Message primer(ChromiumBrowser browser) {
    const std::string_view app = appName(browser);
    return {fmt::format("Let Pacelet see your {} tabs", app),
            sentence("macOS will ask you to allow Pacelet to control {}. Pacelet only reads tab "
                     "titles and addresses, and only closes tabs you choose.",
                     app)};
}

std::string loading(ChromiumBrowser browser) {
    return fmt::format("Reading your {} tabs…", appName(browser));
}

std::string setUp(ChromiumBrowser browser) {
    return fmt::format("Set up {}", appName(browser));
}

std::string setUpFailed(ChromiumBrowser browser) {
    return fmt::format("The file in {}'s settings folder couldn't be written.", appName(browser));
}

Message failure(const BrowserPhase& phase, ChromiumBrowser browser, const std::string& folder) {
    const std::string_view app = appName(browser);
    if (phase.setup) {
        return steps(*phase.setup, app, folder);
    }
    switch (phase.kind) {
    case BrowserPhase::Kind::notPermitted:
        return {"Pacelet needs permission to see your tabs.",
                sentence("Turn on {} for Pacelet in System Settings > Privacy & Security > "
                         "Automation, then try again.",
                         app)};
    case BrowserPhase::Kind::notRunning:
        return {fmt::format("{} isn't running.", app), "Open it and try again."};
    default:
        return {"Couldn't read your tabs.", phase.text};
    }
}

std::string counts(std::size_t tabs, std::size_t windows) {
    return fmt::format("{} tabs in {} {}", tabs, windows, windows == 1 ? "window" : "windows");
}

std::string extensions(const ExtensionUsage& usage) {
    return fmt::format("Extensions: {} running, {}", usage.count, Format::bytes(usage.memoryBytes));
}

std::string note(ChromiumBrowser browser, bool hasIncognito) {
    return fmt::format("{} doesn't share memory per tab, so totals are for the whole browser.{}",
                       appName(browser),
                       hasIncognito ? " Incognito windows are never touched." : "");
}

std::string closeDuplicates(std::size_t count) {
    return fmt::format("Close {} duplicate{}", count, count == 1 ? "" : "s");
}

std::string closeDuplicatesTitle(std::size_t count) {
    return fmt::format("Close {} duplicate {}?", count, tabNoun(count));
}

std::string closeSelected(std::size_t count) {
    return fmt::format("Close selected ({})", count);
}

std::string closeSelectedTitle(std::size_t count) {
    return fmt::format("Close {} {}?", count, tabNoun(count));
}

std::string closeMessage(std::span<const BrowserTab> tabs) {
    std::string message;
    for (const BrowserTab& tab : tabs.first(std::min(tabs.size(), tabsNamed))) {
        message += (&tab == tabs.data() ? "" : "\n") + (tab.title.empty() ? tab.host() : tab.title);
    }
    if (tabs.size() > tabsNamed) {
        message += fmt::format("\nand {} more", tabs.size() - tabsNamed);
    }
    return message;
}

std::string merge(const MergePlan& plan, std::size_t profiles) {
    return profiles < 2 ? "Merge into one window"
                        : fmt::format("Merge {} windows", profileName(plan.profile));
}

std::string mergeTitle(const MergePlan& plan, std::size_t profiles) {
    return profiles < 2 ? "Merge into one window?"
                        : fmt::format("Merge your {} windows?", profileName(plan.profile));
}

std::string mergeMessage(const MergePlan& plan) {
    return fmt::format("Tabs from {} windows move into one. They'll reload. Other profiles and "
                       "incognito windows aren't touched.",
                       plan.windowsToClose.size() + 1);
}

std::string windowName(const BrowserWindow& window) {
    return window.isIncognito ? "Incognito (not touched)" : profileName(window.profile);
}

std::string windowTabs(std::size_t count) {
    return fmt::format("· {} tabs", count);
}

} // namespace pacelet::BrowserTexts
