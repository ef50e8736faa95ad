#include "PaceletApp/RootView/SheetModel.h"

#include "PaceletApp/AppPreferences/AppPreferences.h"
#include "PaceletApp/BrowserPanel/BrowserPanelModel.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Onboarding/OnboardingModel.h"
#include "PaceletApp/Router/Router.h"

#include <QQmlEngine>

#include <utility>

namespace pacelet {

SheetModel::SheetModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      objects_{objects} {
    connect(&objects.monitor, &Monitor::changed, this, [this](const Fields& fields) {
        if (fields.hold(objects_.monitor.windowVisible)) {
            refresh();
        }
    });
    connect(&objects.preferences, &AppPreferences::onboardedChanged, this, &SheetModel::refresh);
    connect(&objects.router, &Router::browserChanged, this, &SheetModel::refresh);
    refresh();
}

/// Without a catalog the window has one message to show, and nothing over it.
SheetModel::Kind SheetModel::wanted() const {
    if (objects_.monitor.catalog() == nullptr) {
        return Kind::none;
    }
    if (!objects_.preferences.onboarded()) {
        return objects_.monitor.windowVisible() ? Kind::onboarding : Kind::none;
    }
    return objects_.router.browser() ? Kind::browser : Kind::none;
}

void SheetModel::refresh() {
    const Kind kind = wanted();
    const bool anotherBrowser = browser_ != objects_.router.browser();
    browser_ = objects_.router.browser();
    if (kind != Kind::none && (kind != shown_ || (kind == Kind::browser && anotherBrowser))) {
        show(kind);
    }
    Q_EMIT openChanged();
}

void SheetModel::show(Kind kind) {
    std::unique_ptr<QObject> next;
    switch (kind) {
    case Kind::onboarding:
        next = std::make_unique<OnboardingModel>(objects_);
        break;
    case Kind::browser:
        next = std::make_unique<BrowserPanelModel>(objects_, *objects_.router.browser());
        break;
    case Kind::none:
        break;
    }
    if (next) {
        QQmlEngine::setObjectOwnership(next.get(), QQmlEngine::CppOwnership);
    }
    auto left = std::exchange(content_, std::move(next));
    shown_ = kind;
    Q_EMIT contentChanged();
    // The items that are bound to it go in the event loop's next turn, and go first.
    if (left) {
        left.release()->deleteLater();
    }
}

QString SheetModel::file() const {
    switch (shown_) {
    case Kind::onboarding:
        return QStringLiteral("Onboarding.qml");
    case Kind::browser:
        return QStringLiteral("BrowserPanel.qml");
    case Kind::none:
        break;
    }
    return {};
}

void SheetModel::close() {
    if (shown_ == Kind::onboarding) {
        objects_.preferences.setOnboarded(true);
    } else {
        objects_.router.setBrowser({});
    }
}

void SheetModel::closed() {
    // A first run that is only out of sight goes on where it stood.
    const bool outOfSight = shown_ == Kind::onboarding && !objects_.preferences.onboarded();
    if (!isOpen() && !outOfSight) {
        show(Kind::none);
    }
}

} // namespace pacelet
