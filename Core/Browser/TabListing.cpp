#include "Core/Browser/TabListing.h"

#include "Core/Browser/TabCleanup.h"
#include "Core/Support/Text.h"

#include <array>
#include <cstdint>
#include <unordered_map>
#include <utility>

namespace pacelet::TabScript {

namespace {

constexpr char recordSeparator = '\x1E';
constexpr char fieldSeparator = '\x1F';

using Fields = std::array<std::string_view, 5>;

/// False when the record has not just as many fields.
bool splitFields(std::string_view record, Fields& fields) {
    for (std::string_view& field : fields) {
        const std::size_t end = record.find(fieldSeparator);
        const bool isLast = &field == &fields.back();
        if (isLast != (end == std::string_view::npos)) {
            return false;
        }
        field = record.substr(0, end);
        record.remove_prefix(isLast ? record.size() : end + 1);
    }
    return true;
}

/// The windows of a listing so far.
class ListingReader {
public:
    explicit ListingReader(std::string_view appName)
        : appName_{appName} {}

    void read(const Fields& fields) {
        if (fields[0] == "W") {
            addWindow(fields);
        } else if (fields[0] == "T") {
            addTab(fields);
        }
    }

    std::vector<BrowserWindow> take() { return std::move(windows_); }

private:
    /// The last window under an id, which is the one that gets the tabs told for that id.
    struct OpenWindow {
        std::size_t index = 0;
        std::int64_t activeTab = 1; ///< counted from 1
    };

    void addWindow(const Fields& fields) {
        const auto [tag, id, mode, activeTab, name] = fields;
        openWindows_[id] = {windows_.size(), parseInteger<std::int64_t>(activeTab).value_or(1)};
        BrowserWindow& window = windows_.emplace_back();
        window.id = id;
        window.isIncognito = mode != "normal";
        window.profile = TabCleanup::profile(name, appName_);
    }

    void addTab(const Fields& fields) {
        const auto [tag, windowID, tabID, title, url] = fields;
        const auto open = openWindows_.find(windowID);
        if (open == openWindows_.end()) {
            return;
        }
        std::vector<BrowserTab>& tabs = windows_[open->second.index].tabs;
        BrowserTab& tab = tabs.emplace_back();
        tab.id.reserve(windowID.size() + 1 + tabID.size());
        tab.id.append(windowID).append("/").append(tabID);
        tab.windowID = windowID;
        tab.tabID = tabID;
        tab.title = title;
        tab.url = url;
        tab.isActive = std::cmp_equal(tabs.size(), open->second.activeTab);
    }

    std::string_view appName_;
    std::vector<BrowserWindow> windows_;
    std::unordered_map<std::string_view, OpenWindow> openWindows_;
};

} // namespace

std::vector<BrowserWindow> parse(std::string_view listing, std::string_view appName) {
    ListingReader reader{appName};
    Fields fields;
    for (const std::string_view record : splitDroppingEmpty(listing, recordSeparator)) {
        if (splitFields(record, fields)) {
            reader.read(fields);
        }
    }
    return reader.take();
}

} // namespace pacelet::TabScript
