#pragma once

#include "Core/Browser/ChromiumBrowser.h"
#include "PaceletApp/Router/Screen.h"

#include <QObject>

#include <cstdint>
#include <optional>
#include <string>

namespace pacelet {

/// Where the user is, shared by all screens. Each signal is sent when its value changed and at no
/// other time. Belongs to the UI thread.
class Router final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The screen on show.
    Screen screen() const { return screen_; }
    /// Id of the group that is open in the process list.
    const std::optional<std::string>& expandedID() const { return expandedID_; }
    /// The browser whose tab panel is open.
    std::optional<ChromiumBrowser> browser() const { return browser_; }
    /// Counts how often the process list was told to focus its search field.
    std::int64_t focusSearch() const { return focusSearch_; }

    /// Whether the usage screen is to begin at what slowed the machine down; asked once, the
    /// answer is no from then on.
    bool takeCausesWanted();

    void setScreen(Screen screen);
    void setExpandedID(std::optional<std::string> id);
    void setBrowser(std::optional<ChromiumBrowser> browser);

    /// Goes to the process list and has it focus its search field.
    void find();

    /// Goes to the usage screen, to what slowed the machine down.
    void showCauses();

Q_SIGNALS:
    void screenChanged();
    void expandedIDChanged();
    void browserChanged();
    void focusSearchChanged();

private:
    Screen screen_ = Screen::overview;
    std::optional<std::string> expandedID_;
    std::optional<ChromiumBrowser> browser_;
    std::int64_t focusSearch_ = 0;
    bool causesWanted_ = false;
};

} // namespace pacelet
