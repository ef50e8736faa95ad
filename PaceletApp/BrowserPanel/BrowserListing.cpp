#include "PaceletApp/BrowserPanel/BrowserListing.h"

#include "PaceletApp/BrowserPanel/BrowserTexts.h"
#include "PaceletApp/Support/QtText.h"

#include <set>

namespace pacelet {

BrowserListing::BrowserListing(std::vector<BrowserWindow> listed)
    : windows{std::move(listed)},
      rows{tabRows(windows)},
      duplicates{TabCleanup::duplicates(windows)},
      plan{TabCleanup::mergePlan(windows)} {
    std::set<std::optional<std::string>> known;
    for (const BrowserWindow& window : windows) {
        tabs += window.tabs.size();
        hasIncognito = hasIncognito || window.isIncognito;
        if (!window.isIncognito) {
            known.insert(window.profile);
        }
    }
    profiles = known.size();
}

std::vector<BrowserTab> BrowserListing::tabsOf(const TabSelection& selection) const {
    std::vector<BrowserTab> found;
    if (selection.empty()) {
        return found;
    }
    for (const BrowserWindow& window : windows) {
        for (const BrowserTab& tab : window.tabs) {
            if (selection.contains(tab.id)) {
                found.push_back(tab);
            }
        }
    }
    return found;
}

TabsLook tabsLook(const BrowserListing& listing, ChromiumBrowser browser,
                  const std::optional<ExtensionUsage>& extensions, const TabSelection& selection) {
    TabsLook look;
    look.counts = qtText(BrowserTexts::counts(listing.tabs, listing.windows.size()));
    look.note = qtText(BrowserTexts::note(browser, listing.hasIncognito));
    if (extensions) {
        look.extensions = qtText(BrowserTexts::extensions(*extensions));
    }
    if (!listing.duplicates.empty()) {
        look.closeDuplicates = qtText(BrowserTexts::closeDuplicates(listing.duplicates.size()));
    }
    if (!selection.empty()) {
        look.closeSelected = qtText(BrowserTexts::closeSelected(listing.tabsOf(selection).size()));
    }
    if (listing.plan) {
        look.merge = qtText(BrowserTexts::merge(*listing.plan, listing.profiles));
    }
    return look;
}

} // namespace pacelet
