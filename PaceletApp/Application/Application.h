#pragma once

#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Platform/DesktopWishes.h"
#include "PaceletApp/AppPreferences/AppPreferences.h"
#include "PaceletApp/AppUpdater/AppUpdater.h"
#include "PaceletApp/Application/Activation.h"
#include "PaceletApp/Application/Scene.h"
#include "PaceletApp/Application/TrayItem.h"
#include "PaceletApp/Components/QuestionModel.h"
#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/InternetView/SpeedTester.h"
#include "PaceletApp/RootView/RootModel.h"
#include "PaceletApp/Support/HostTranslator.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QSize>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace pacelet {

/// Owns the long-lived objects, and opens and closes the main window and the panel over them. It
/// lives on in the tray when the window is closed. Belongs to the UI thread.
class Application final : public QObject {
    Q_OBJECT

public:
    /// The host behind `platform` and the scheduler outlive this. Without a catalog there is
    /// nothing to see but one message. `engine` may read its files already; null for one that is
    /// made when the first window opens.
    Application(const Platform& platform, Scheduler& scheduler,
                const std::optional<ProcessCatalog>& catalog,
                std::unique_ptr<QQmlEngine> engine = nullptr);
    ~Application() override;

    Monitor& monitor() { return monitor_; }
    Router& router() { return router_; }
    FixActions& actions() { return actions_; }
    AppPreferences& preferences() { return preferences_; }

    AppUpdater& updater() { return updater_; }

    /// Starts sampling. Shows nothing.
    void start();

    /// Shows the tray item, unless the user wants none.
    void showTray();

    /// What the desktop asks of its programs; nothing until told.
    void setWishes(const DesktopWishes& wishes);

    /// What tells how much room the main window has, in logical pixels, when it opens. A window
    /// that nobody looks at has all it needs.
    void setRoom(std::function<QSize()> room) { room_ = std::move(room); }

    /// The application has a menu bar, so the main window that opens next shows no menu itself.
    void haveMenuBar() { hasMenuBar_ = true; }

    /// Does what a command in the menu bar says, whatever window is open.
    void perform(const Command& command);

    /// Opens the main window or brings it forward.
    void showWindow(const pacelet::Activation& activation = {});
    void closeWindow();

    /// Opens the settings or brings them forward.
    void showSettings();

    /// Opens the panel beside `icon`, or at the pointer when that is empty.
    void openPanel(const QRect& icon);
    void closePanel();

    /// Whether any window is open.
    bool isOpen() const { return mainScene_ || settingsScene_ || panelScene_; }

    /// Null while they are closed.
    QQuickWindow* window();
    QQuickWindow* settings();
    QQuickWindow* panel();

Q_SIGNALS:
    /// The user wants the program to end.
    void quitRequested();
    /// The main window was made.
    void windowOpened();
    /// The main window is about to close, and nothing will show that the program lives on.
    void leavingUnseen();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void trayPressed();
    bool mayLeaveUnseen() const;
    SharedObjects sharedObjects();
    void openWindow();
    void openSettings();
    void windowChanged();
    void panelLostFocus();
    void dropLater(std::unique_ptr<Scene> scene);
    void dropClosed();
    QQmlEngine& engine();

    HostTranslator words_;
    Platform platform_;
    Scheduler& scheduler_;
    AppPreferences preferences_;
    Monitor monitor_;
    Router router_;
    FixActions actions_;
    AppUpdater updater_;
    SpeedTester speedTester_;
    QuestionModel question_;
    std::unique_ptr<TrayItem> tray_;
    std::function<QSize()> room_;
    bool hasMenuBar_ = false;
    DesktopWishes wishes_;
    std::unique_ptr<QQmlEngine> engine_;
    QPointer<RootModel> mainModel_; ///< of `mainScene_`
    std::unique_ptr<Scene> mainScene_;
    std::unique_ptr<Scene> settingsScene_;
    std::unique_ptr<Scene> panelScene_;
    std::vector<std::unique_ptr<Scene>> closedScenes_;
    std::optional<MonotonicTime> panelLostFocusAt_;
};

} // namespace pacelet
