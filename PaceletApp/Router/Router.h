#pragma once

#include "Core/Browser/ChromiumBrowser.h"
#include "PaceletApp/Router/Screen.h"

#include <QObject>
#include <QProperty>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace pacelet {

/// Where the user is, shared by all screens. Each signal is sent when its value changed and at no
/// other time. Belongs to the UI thread.
class Router final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The screen on show.
    Screen screen() const { return screen_.value(); }
    /// Id of the group that is open in the process list.
    const std::optional<std::string>& expandedID() const { return expandedID_.value(); }
    /// The browser whose tab panel is open.
    std::optional<ChromiumBrowser> browser() const { return browser_.value(); }
    /// Counts how often the process list was told to focus its search field.
    std::int64_t focusSearch() const { return focusSearch_.value(); }

    /// Whether the usage screen is to begin at what slowed the machine down; asked once, the
    /// answer is no from then on.
    bool takeCausesWanted();

    void setScreen(Screen screen) { screen_ = screen; }
    void setExpandedID(std::optional<std::string> id) { expandedID_ = std::move(id); }
    void setBrowser(std::optional<ChromiumBrowser> browser) { browser_ = browser; }

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
    bool causesWanted_ = false;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Router, Screen, screen_, Screen::overview,
                                         &Router::screenChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Router, std::optional<std::string>, expandedID_,
                               &Router::expandedIDChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Router, std::optional<ChromiumBrowser>, browser_,
                               &Router::browserChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Router, std::int64_t, focusSearch_, &Router::focusSearchChanged)
};

} // namespace pacelet
