#pragma once

#include "tests/PaceletApp/Support/WindowProbe.h"

#include <QQmlEngine>
#include <QQuickView>
#include <QVariantMap>

namespace pacelet {

/// What a stage is built on; it is there before anything looks at it.
struct StageGround {
    QQmlEngine engine;
    QQuickView view{&engine, nullptr};
};

/// Shows a piece of QML in an active window, and does to it what a user does.
class Stage : private StageGround, public WindowProbe {
public:
    /// `body` stands inside an Item that fills the window; QtQuick and Pacelet are imported, and
    /// the names of `context` are known. Motion takes no time here.
    explicit Stage(const QByteArray& body, const QVariantMap& context = {},
                   QSize size = {640, 480});
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    QQuickView& view() { return StageGround::view; }
    QQmlEngine& engine() { return StageGround::engine; }
};

} // namespace pacelet
