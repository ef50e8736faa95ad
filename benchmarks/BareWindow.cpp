// The least that a window of Qt Quick can be: a few colours, and one figure that changes each
// second. `window-figures` measures it beside ours, and so tells what of our figures is Qt's.

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

namespace {

constexpr char scene[] = R"(
import QtQuick
import QtQuick.Window

Window {
    id: window

    property int seconds: 0

    width: 1200
    height: 760
    visible: true
    color: "black"

    Row {
        Repeater {
            model: ["red", "orange", "yellow", "green", "blue", "violet"]
            Rectangle { required property color modelData; color: modelData; width: 40; height: 40 }
        }
        Text { text: window.seconds; color: "white"; font.pixelSize: 32 }
    }
    Timer { interval: 1000; running: true; repeat: true; onTriggered: ++window.seconds }
}
)";

} // namespace

int main(int argc, char** argv) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application{argc, argv};
    QQmlEngine engine;
    QQmlComponent component{&engine};
    component.setData(scene, {});
    const std::unique_ptr<QObject> window{component.create()};
    return window ? QGuiApplication::exec() : 1;
}
