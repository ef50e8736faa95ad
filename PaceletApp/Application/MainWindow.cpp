#include "PaceletApp/Application/MainWindow.h"

#include "Core/Support/Precondition.h"
#include "PaceletApp/Components/AppIconProvider.h"
#include "PaceletApp/Components/ScreenModule.h"
#include "PaceletApp/Support/QtText.h"

#include <QCoreApplication>
#include <QIcon>
#include <QQmlComponent>
#include <QQuickItem>
#include <QShortcut>

namespace pacelet {

namespace {

constexpr QSize usualSize{1200, 860};
constexpr QSize leastSize{1000, 700};

} // namespace

MainWindow::MainWindow(const SharedObjects& objects, Workspace& workspace)
    : objects_{objects}, model_{objects}, view_{&engine_, nullptr} {
    installScreens(engine_);
    engine_.addImageProvider(QStringLiteral("appicon"), new AppIconProvider{workspace});
    view_.setTitle(QStringLiteral("Pacelet"));
    view_.setIcon(QIcon{QStringLiteral(":/icons/pacelet.svg")});
    view_.setResizeMode(QQuickView::SizeRootObjectToView);
    view_.setMinimumSize(leastSize);
    load();
    view_.resize(usualSize);
    connectShortcuts();
    QObject::connect(&view_, &QWindow::visibleChanged, &model_,
                     [this](bool visible) { followVisibility(visible); });
}

MainWindow::~MainWindow() {
    // The tree goes before the models that it is bound to.
    delete view_.rootObject();
    // Textures whose pictures have gone are freed by the next frame, and by nothing else.
    view_.releaseResources();
    view_.grabWindow();
}

void MainWindow::load() {
    const QUrl source{QStringLiteral("qrc:/qt/qml/Pacelet/MainView.qml")};
    QQmlComponent component{&engine_, source};
    QObject* root = component.createWithInitialProperties(
        {{QStringLiteral("model"), QVariant::fromValue(&model_)}});
    precondition(root != nullptr, qPrintable(component.errorString()));
    view_.setContent(source, nullptr, root);
}

void MainWindow::connectShortcuts() {
    for (const Command& command : commands()) {
        auto* shortcut = new QShortcut{QKeySequence{qtText(command.shortcut)}, &view_};
        QObject::connect(shortcut, &QShortcut::activated, &model_,
                         [this, command] { model_.run(command); });
    }
    QObject::connect(&model_, &RootModel::closeRequested, &view_, [this] { view_.close(); });
    QObject::connect(&model_, &RootModel::quitRequested, &view_, &QCoreApplication::quit);
}

void MainWindow::followVisibility(bool visible) {
    objects_.monitor.setWindowVisible(visible);
    if (visible) {
        objects_.monitor.start();
    }
}

} // namespace pacelet
