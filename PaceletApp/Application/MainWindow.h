#pragma once

#include "Core/Platform/Workspace.h"
#include "PaceletApp/RootView/RootModel.h"

#include <QQmlEngine>
#include <QQuickView>

namespace pacelet {

/// The main window. While it is on screen the machine is measured at the quick cadence.
class MainWindow {
public:
    /// All of it outlives this. Stops the program when the window's QML cannot be loaded, which is
    /// a fault of the build.
    MainWindow(const SharedObjects& objects, Workspace& workspace);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    QQuickView& view() { return view_; }
    void show() { view_.show(); }

private:
    void load();
    void connectShortcuts();
    void followVisibility(bool visible);

    SharedObjects objects_;
    RootModel model_;
    QQmlEngine engine_;
    QQuickView view_;
};

} // namespace pacelet
