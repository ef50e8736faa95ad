#pragma once

#include "Core/Browser/ChromiumBrowser.h"
#include "Core/Browser/TabCleanup.h"
#include "PaceletApp/BrowserPanel/TabRow.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace pacelet {

/// Ids of tabs.
using TabSelection = std::unordered_set<std::string>;

/// The windows of a browser with all that follows from them. Dear to make for thousands of tabs, so
/// made in the background.
struct BrowserListing {
    BrowserListing() = default;
    explicit BrowserListing(std::vector<BrowserWindow> listed);

    std::vector<BrowserWindow> windows;
    std::vector<TabRow> rows;
    std::vector<BrowserTab> duplicates;
    std::optional<MergePlan> plan;
    std::size_t tabs = 0;
    std::size_t profiles = 0; ///< of the windows that are not incognito
    bool hasIncognito = false;

    /// The tabs that are both listed and selected, in listing order.
    std::vector<BrowserTab> tabsOf(const TabSelection& selection) const;
};

/// What stands over the list of tabs. An empty text means that its line or button is not there.
struct TabsLook {
    Q_GADGET
    QML_VALUE_TYPE(tabsLook)
    Q_PROPERTY(QString counts MEMBER counts CONSTANT)
    Q_PROPERTY(QString extensions MEMBER extensions CONSTANT)
    Q_PROPERTY(QString note MEMBER note CONSTANT)
    Q_PROPERTY(QString closeDuplicates MEMBER closeDuplicates CONSTANT)
    Q_PROPERTY(QString closeSelected MEMBER closeSelected CONSTANT)
    Q_PROPERTY(QString merge MEMBER merge CONSTANT)

public:
    QString counts;
    QString extensions;
    QString note;
    QString closeDuplicates;
    QString closeSelected;
    QString merge;

    bool operator==(const TabsLook&) const = default;
};

TabsLook tabsLook(const BrowserListing& listing, ChromiumBrowser browser,
                  const std::optional<ExtensionUsage>& extensions, const TabSelection& selection);

} // namespace pacelet
