#pragma once

#include "Core/Platform/Preferences.h"

#include <QObject>
#include <QProperty>

namespace pacelet {

/// The preferences of the program's frame. What is written is stored at once. Belongs to the UI
/// thread.
class AppPreferences final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool showMenuBar READ showMenuBar WRITE setShowMenuBar NOTIFY showMenuBarChanged)

public:
    /// `preferences` outlives this.
    explicit AppPreferences(Preferences& preferences, QObject* parent = nullptr);

    /// The first-run sheet has been completed.
    bool onboarded() const { return onboarded_.value(); }
    void setOnboarded(bool onboarded);

    /// The menu-bar item is present.
    bool showMenuBar() const { return showMenuBar_.value(); }
    void setShowMenuBar(bool show);

    /// The user knows how to come back where no menu-bar item leads there.
    bool toldOfLeaving() const { return toldOfLeaving_; }
    void setToldOfLeaving();

    /// What keeps any preference from being what the user has chosen.
    PreferencesTrouble trouble() const { return preferences_.trouble(); }

Q_SIGNALS:
    void onboardedChanged();
    void showMenuBarChanged();
    void troubleChanged();

private:
    Preferences& preferences_;
    bool toldOfLeaving_;
    ObserverHandle troubleObserver_;
    Q_OBJECT_BINDABLE_PROPERTY(AppPreferences, bool, onboarded_, &AppPreferences::onboardedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppPreferences, bool, showMenuBar_,
                               &AppPreferences::showMenuBarChanged)
};

} // namespace pacelet
