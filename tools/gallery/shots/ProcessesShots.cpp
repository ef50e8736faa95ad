#include "tools/gallery/shots/Shot.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMetaObject>
#include <QQuickItem>
#include <QQuickWindow>

#include <string>

namespace pacelet::gallery {

namespace {

Router& router(Session& session) {
    return session.application().router();
}

void press(Session& session, int key, const QString& text = {}) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event{type, key, Qt::NoModifier, text};
        QCoreApplication::sendEvent(session.application().window(), &event);
    }
}

std::function<void(Session&)> searching(const QString& text) {
    return [text](Session& session) {
        watching(Screen::processes)(session);
        router(session).find();
        session.pass(0);
        for (const QChar letter : text) {
            press(session, 0, QString{letter});
        }
        session.pass(0);
    };
}

/// Sets a property of the screen's model.
std::function<void(Session&)> with(const char* property, const QVariant& value) {
    return [property, value](Session& session) {
        watching(Screen::processes, 60)(session);
        auto* const root = session.application().window()->property("model").value<QObject*>();
        root->property("screenModel").value<QObject*>()->setProperty(property, value);
        session.pass(0);
    };
}

void filtered(Session& session) {
    watching(Screen::processes, 60)(session);
    auto* const root = session.application().window()->property("model").value<QObject*>();
    QMetaObject::invokeMethod(root->property("screenModel").value<QObject*>(), "choose",
                              Q_ARG(QString, QStringLiteral("safe")));
    session.pass(0);
}

/// Opens the first group of this name, as a finding does that leads here.
std::function<void(Session&)> opened(const std::string& name, double seconds = 60) {
    return [name, seconds](Session& session) {
        session.mac().fillLargeFolders();
        session.pass(seconds);
        for (const ProcessGroup& group : session.application().monitor().groups()) {
            if (group.displayName == name) {
                router(session).setExpandedID(group.id);
                break;
            }
        }
        watching(Screen::processes, 6)(session);
    };
}

/// Runs what was named without mercy.
void oddNames(Session& session) {
    {
        const auto world = session.mac().machine.lock();
        const char* const names[] = {"🦀🔥 très-actif 日本語のプロセス",
                                     "محرك البحث السريع", "a-tool-with-"};
        double load = 300;
        for (std::string name : names) {
            if (name.back() == '-') {
                name += std::string(290, 'm');
            }
            Simulated::Process process = *world->processes.find("WindowServer");
            process.pid = 0;
            process.path = "/usr/local/bin/" + name;
            process.load.percent = load -= 60;
            process.footprint = std::int64_t{700} << 30;
            world->processes.spawn(process);
        }
    }
    session.open(Screen::processes);
    session.pass(30);
}

} // namespace

std::vector<Shot> processesShots() {
    return {
        {"processes-busy", "chrome-tabs", watching(Screen::processes, 60)},
        {"processes-checking", "quiet", [](Session& session) { session.open(Screen::processes); }},
        {"processes-by-memory", "out-of-memory", with("sortByMemory", true)},
        {"processes-filtered", "chrome-tabs", filtered},
        {"processes-search", "spotlight-stuck", searching(QStringLiteral("mds"))},
        {"processes-no-match", "quiet", searching(QStringLiteral("no such thing"))},
        {"processes-app", "chrome-tabs", opened("Google Chrome")},
        {"processes-spotlight", "spotlight-stuck", opened("mds_stores", 12000)},
        {"processes-window-server", "window-server", opened("WindowServer")},
        {"processes-hot-kernel", "hot", watching(Screen::processes, 60)},
        {"processes-odd-names", "quiet", oddNames, leastSize, {}, true},
        {"processes-narrow", "window-server", opened("WindowServer"), leastSize},
        {"processes-names", "quiet",
         [](Session& session) {
             runLongUsualNames(session);
             watching(Screen::processes, 60)(session);
         },
         leastSize},
        {"processes-wide", "chrome-tabs", opened("Google Chrome"), {2560, 1440}},
        {"processes-keyboard", "quiet",
         [](Session& session) {
             searching(QStringLiteral("s"))(session);
             press(session, Qt::Key_Down);
             press(session, Qt::Key_Down);
             press(session, Qt::Key_Space);
             session.pass(0);
         }},
    };
}

} // namespace pacelet::gallery
