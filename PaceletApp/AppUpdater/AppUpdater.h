#pragma once

#include <QObject>
#include <QProperty>

#include <functional>
#include <memory>
#include <string>

namespace pacelet {

/// The updater of the system that this program is delivered for.
class UpdaterController {
public:
    virtual ~UpdaterController() = default;

    virtual void startUpdater() = 0;
    virtual void checkForUpdates() = 0;
    virtual bool canCheckForUpdates() = 0;
    virtual bool automaticallyChecksForUpdates() = 0;
    virtual void setAutomaticallyChecksForUpdates(bool on) = 0;

    /// Calls `changed` whenever `canCheckForUpdates` changed.
    virtual void observe(std::function<void()> changed) = 0;
};

/// What a delivery of the program says of its updates; empty where it is not set.
struct UpdateSettings {
    std::string publicKey; ///< checks the signatures of updates
    std::string bundleIdentifier;
};

/// The software updater, or its absence: then nothing of it is shown. Belongs to the UI thread.
class AppUpdater final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isConfigured READ isConfigured CONSTANT)
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY canCheckForUpdatesChanged)

public:
    /// `controller` is null where the system has no updater. It is not started yet.
    AppUpdater(const UpdateSettings& settings, std::unique_ptr<UpdaterController> controller,
               QObject* parent = nullptr);

    bool isConfigured() const { return configured_; }
    bool canCheckForUpdates() const { return canCheckForUpdates_.value(); }

    /// Whether the updater looks for updates by itself. Without one it does not.
    bool automaticallyChecksForUpdates() const;
    void setAutomaticallyChecksForUpdates(bool on);

    /// The main window is on screen: the first time, a configured updater starts.
    void windowAppeared();

    Q_INVOKABLE void checkForUpdates();

Q_SIGNALS:
    void canCheckForUpdatesChanged();

private:
    void readController();

    std::unique_ptr<UpdaterController> controller_;
    bool configured_;
    bool started_ = false;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppUpdater, bool, canCheckForUpdates_, false,
                                         &AppUpdater::canCheckForUpdatesChanged)
};

} // namespace pacelet
