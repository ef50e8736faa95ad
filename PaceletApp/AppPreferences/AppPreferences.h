#pragma once

#include "Core/Platform/Preferences.h"

#include <QObject>

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
    bool onboarded() const { return onboarded_; }
    void setOnboarded(bool onboarded);

    /// The menu-bar item is present.
    bool showMenuBar() const { return showMenuBar_; }
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
    bool onboarded_;
    bool showMenuBar_;
    bool toldOfLeaving_;
    ObserverHandle troubleObserver_;
};

} // namespace pacelet
