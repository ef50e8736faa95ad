#pragma once

#include "Core/Browser/ChromiumBrowser.h"
#include "Core/Browser/TabCleanup.h"
#include "PaceletApp/BrowserPanel/BrowserPhase.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>

/// Every sentence of the tab cleaner.
namespace pacelet::BrowserTexts {

struct Message {
    std::string heading;
    std::string body;

    bool operator==(const Message&) const = default;
};

Message primer(ChromiumBrowser browser);
std::string loading(ChromiumBrowser browser);

/// What went wrong; only for a phase that `isFailure`. `folder` is where our extension stands, for
/// a phase that tells of it.
Message failure(const BrowserPhase& phase, ChromiumBrowser browser, const std::string& folder = {});

/// The button that makes the browser know us, and what is said where it did not work.
std::string setUp(ChromiumBrowser browser);
std::string setUpFailed(ChromiumBrowser browser);

std::string counts(std::size_t tabs, std::size_t windows);
std::string extensions(const ExtensionUsage& usage);
std::string note(ChromiumBrowser browser, bool hasIncognito);

std::string closeDuplicates(std::size_t count);
std::string closeDuplicatesTitle(std::size_t count);
std::string closeSelected(std::size_t count);
std::string closeSelectedTitle(std::size_t count);
/// Names the first few of the tabs and counts the others.
std::string closeMessage(std::span<const BrowserTab> tabs);

/// `profiles` counts the profiles among which the plan chose one.
std::string merge(const MergePlan& plan, std::size_t profiles);
std::string mergeTitle(const MergePlan& plan, std::size_t profiles);
std::string mergeMessage(const MergePlan& plan);

std::string windowName(const BrowserWindow& window);
std::string windowTabs(std::size_t count);

} // namespace pacelet::BrowserTexts
