#include "PaceletApp/Application/Application.h"

#include "PaceletApp/Application/IdleMemory.h"
#include "PaceletApp/Application/PanelPlace.h"
#include "PaceletApp/Application/WindowManner.h"
#include "PaceletApp/Components/AppIconProvider.h"
#include "PaceletApp/MenuBarView/MenuBarModel.h"
#include "PaceletApp/SettingsView/SettingsModel.h"
#include "PaceletApp/Websites.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPixmapCache>
#include <QScreen>

namespace pacelet {

namespace {

/// The press that takes the focus from the panel may be the one on its own tray item, which is to
/// leave it closed.
constexpr Seconds samePress{0.3};

QScreen* screenAt(QPoint place) {
    QScreen* const screen = QGuiApplication::screenAt(place);
    return screen != nullptr ? screen : QGuiApplication::primaryScreen();
}

} // namespace

Application::Application(const Platform& platform, Scheduler& scheduler,
                         const std::optional<ProcessCatalog>& catalog,
                         std::unique_ptr<QQmlEngine> engine)
    : words_{platform.system},
      platform_{platform},
      scheduler_{scheduler},
      preferences_{platform.preferences},
      monitor_{platform, scheduler, catalog},
      actions_{platform, scheduler, monitor_, router_, tidyvaultWebsite},
      updater_{UpdateSettings{}, nullptr},
      speedTester_{platform, scheduler},
      question_{scheduler},
      engine_{std::move(engine)} {
    if (engine_) {
        AppIconProvider::install(*engine_, platform_.workspace);
    }
    connect(&preferences_, &AppPreferences::showMenuBarChanged, this, &Application::showTray);
}

Application::~Application() {
    for (QQuickWindow* const open : {window(), settings(), panel()}) {
        if (open != nullptr) {
            open->disconnect(this);
        }
    }
}

void Application::start() {
    monitor_.start();
}

void Application::showTray() {
    if (!tray_ && preferences_.showMenuBar()) {
        tray_ = std::make_unique<TrayItem>(monitor_);
        connect(tray_.get(), &TrayItem::pressed, this, &Application::trayPressed);
    }
    if (tray_) {
        tray_->setShown(preferences_.showMenuBar());
    }
}

QQmlEngine& Application::engine() {
    if (!engine_) {
        engine_ = makeEngine();
        AppIconProvider::install(*engine_, platform_.workspace);
        pacelet::setWishes(*engine_, wishes_);
    }
    return *engine_;
}

void Application::setWishes(const DesktopWishes& wishes) {
    const bool changed = std::exchange(wishes_, wishes) != wishes;
    if (changed && engine_) {
        pacelet::setWishes(*engine_, wishes);
    }
}

QQuickWindow* Application::window() {
    return mainScene_ ? &mainScene_->window() : nullptr;
}

QQuickWindow* Application::settings() {
    return settingsScene_ ? &settingsScene_->window() : nullptr;
}

QQuickWindow* Application::panel() {
    return panelScene_ ? &panelScene_->window() : nullptr;
}

void Application::showWindow(const Activation& activation) {
    if (!mainScene_) {
        openWindow();
    }
    WindowManner::bringForward(mainScene_->window(), activation);
}

SharedObjects Application::sharedObjects() {
    return {monitor_,     router_,    actions_,  preferences_, updater_,
            speedTester_, scheduler_, question_, platform_};
}

void Application::openWindow() {
    auto model = std::make_unique<RootModel>(sharedObjects(), !hasMenuBar_);
    mainModel_ = model.get();
    connect(this, &Application::leavingUnseen, model.get(), &RootModel::askToLeave);
    connect(model.get(), &RootModel::settingsRequested, this, &Application::showSettings);
    connect(model.get(), &RootModel::closeRequested, this, &Application::closeWindow);
    connect(model.get(), &RootModel::quitRequested, this, &Application::quitRequested);
    mainScene_ =
        std::make_unique<Scene>(engine(), QStringLiteral("MainWindow.qml"), std::move(model));
    connect(&mainScene_->window(), &QWindow::visibilityChanged, this, &Application::windowChanged);
    QQuickWindow& opened = mainScene_->window();
    opened.installEventFilter(this);
    if (const QSize room = room_ ? room_() : QSize{}; room.isValid()) {
        opened.setProperty("room", QSizeF{room});
        opened.setWindowStates(opened.property("takesScreen").toBool() ? Qt::WindowMaximized
                                                                       : Qt::WindowNoState);
    }
    Q_EMIT windowOpened();
}

void Application::windowChanged() {
    if (!mainScene_) {
        return;
    }
    const QWindow::Visibility visibility = mainScene_->window().visibility();
    const bool onScreen = visibility != QWindow::Hidden && visibility != QWindow::Minimized;
    monitor_.setWindowVisible(onScreen);
    if (onScreen) {
        monitor_.start();
        updater_.windowAppeared();
    }
    if (visibility == QWindow::Hidden) {
        dropLater(std::move(mainScene_));
    }
}

/// Where nothing shows that the program lives on, and how to come back, its user has to know first.
/// A Mac has a menu bar, and its dock besides.
bool Application::mayLeaveUnseen() const {
    const bool isSeen = tray_ && preferences_.showMenuBar() && TrayItem::isAvailable();
    return isSeen || platform_.system == OperatingSystem::macOS || preferences_.toldOfLeaving();
}

bool Application::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::Close || object != window() || mayLeaveUnseen()) {
        return QObject::eventFilter(object, event);
    }
    event->ignore();
    preferences_.setToldOfLeaving();
    Q_EMIT leavingUnseen();
    return true;
}

void Application::perform(const Command& command) {
    switch (command.action) {
    case Command::Action::closeWindow:
        if (QWindow* const front = QGuiApplication::focusWindow(); front && front != window()) {
            front->close();
            return;
        }
        break;
    case Command::Action::find:
    case Command::Action::showScreen:
        showWindow();
        break;
    case Command::Action::checkNow:
    case Command::Action::settings:
    case Command::Action::checkForUpdates:
    case Command::Action::quit:
        break;
    }
    if (mainScene_) {
        mainModel_->perform(command);
        return;
    }
    // What needs no window.
    if (command.action == Command::Action::checkNow) {
        monitor_.checkNow();
    } else if (command.action == Command::Action::settings) {
        showSettings();
    } else if (command.action == Command::Action::checkForUpdates) {
        updater_.checkForUpdates();
    } else if (command.action == Command::Action::quit) {
        Q_EMIT quitRequested();
    }
}

void Application::closeWindow() {
    if (mainScene_) {
        mainScene_->window().close();
    }
}

void Application::showSettings() {
    if (!settingsScene_) {
        openSettings();
    }
    WindowManner::bringForward(settingsScene_->window());
}

void Application::openSettings() {
    settingsScene_ = std::make_unique<Scene>(engine(), QStringLiteral("SettingsWindow.qml"),
                                             std::make_unique<SettingsModel>(sharedObjects()));
    connect(&settingsScene_->window(), &QWindow::visibleChanged, this, [this](bool visible) {
        if (!visible && settingsScene_) {
            dropLater(std::move(settingsScene_));
        }
    });
}

void Application::trayPressed() {
    const bool closedByThisPress =
        panelLostFocusAt_ && scheduler_.monotonicNow() - *panelLostFocusAt_ < samePress;
    panelLostFocusAt_.reset();
    if (panelScene_) {
        closePanel();
    } else if (!closedByThisPress) {
        openPanel(tray_->place());
    }
}

void Application::openPanel(const QRect& icon) {
    if (panelScene_) {
        return;
    }
    auto made =
        std::make_unique<MenuBarModel>(monitor_, actions_, platform_.loginItems, scheduler_);
    MenuBarModel* const model = made.get();
    connect(model, &MenuBarModel::openRequested, this, [this] {
        closePanel();
        showWindow();
    });
    connect(model, &MenuBarModel::quitRequested, this, &Application::quitRequested);
    panelScene_ =
        std::make_unique<Scene>(engine(), QStringLiteral("MenuBarPanel.qml"), std::move(made));
    QQuickWindow& panel = panelScene_->window();
    const QPoint pointer = QCursor::pos();
    const QScreen* const screen = screenAt(icon.isEmpty() ? pointer : icon.center());
    if (screen != nullptr) {
        panel.setPosition(panelPlace(icon, pointer, panel.size(), screen->availableGeometry()));
    }
    connect(&panel, &QWindow::activeChanged, this, &Application::panelLostFocus);
    connect(&panel, &QWindow::visibleChanged, this, [this](bool visible) {
        if (!visible) {
            closePanel();
        }
    });
    WindowManner::leaveTaskBar(panel);
    model->liveDot()->setShown(true);
    monitor_.setMenuOpen(true);
    panel.show();
    panel.raise();
    panel.requestActivate();
}

void Application::panelLostFocus() {
    if (!panelScene_ || panelScene_->window().isActive()) {
        return;
    }
    const QRect icon = tray_ ? tray_->place() : QRect{};
    if (icon.isEmpty() || icon.contains(QCursor::pos())) {
        panelLostFocusAt_ = scheduler_.monotonicNow();
    }
    closePanel();
}

void Application::closePanel() {
    if (!panelScene_) {
        return;
    }
    // Taken first: hiding it tells so, and comes back here.
    auto scene = std::move(panelScene_);
    scene->window().hide();
    monitor_.setMenuOpen(false);
    dropLater(std::move(scene));
}

/// A scene is closed from within its own events, and must outlive them.
void Application::dropLater(std::unique_ptr<Scene> scene) {
    closedScenes_.push_back(std::move(scene));
    QMetaObject::invokeMethod(this, &Application::dropClosed, Qt::QueuedConnection);
}

void Application::dropClosed() {
    closedScenes_.clear();
    if (!isOpen()) {
        engine_.reset();
        QPixmapCache::clear();
        releaseIdleMemory();
    }
}

} // namespace pacelet
