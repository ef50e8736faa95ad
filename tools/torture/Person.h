#pragma once

#include "Hosts/Simulated/Model/Random.h"
#include "tools/session/Session.h"
#include "tools/torture/Step.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <map>
#include <string>
#include <vector>

namespace pacelet::torture {

/// Calls `visit` with every item that can be seen, this one included.
template<typename Visit>
void forEachSeen(QQuickItem& item, const Visit& visit) {
    if (!item.isVisible() || item.opacity() <= 0) {
        return;
    }
    visit(item);
    for (QQuickItem* const child : item.childItems()) {
        forEachSeen(*child, visit);
    }
}

/// A dialog that asks something, on show in a window.
struct Asking {
    std::string title;
    QQuickItem* confirm = nullptr; ///< the button that agrees
};

/// What is asked in this window now.
std::vector<Asking> askedIn(QQuickWindow& window);

/// The popups in this window that keep all else in it from the pointer.
std::vector<QQuickItem*> modalsIn(QQuickWindow& window);

/// The windows of the program that can be seen.
std::vector<QQuickWindow*> windowsOnShow(Application& application);

/// Somebody in front of the program who tries everything, and knows what they agreed to.
class Person {
public:
    explicit Person(Session& session)
        : session_{session} {}

    /// Does it, and says in a few words what it was.
    std::string act(Verb verb, Simulated::Random& random);

    /// What was seen of all that can be pressed, and how often it was pressed: the names of
    /// controls without what data puts into them.
    const std::map<std::string, int>& presses() const { return presses_; }

    /// The titles of all questions that were agreed to, in their order.
    const std::vector<std::string>& agreed() const { return agreed_; }

private:
    std::string press(Simulated::Random& random);
    std::string key(Simulated::Random& random);
    std::string type(Simulated::Random& random);
    std::string point(Simulated::Random& random);
    std::string window(Simulated::Random& random);
    QQuickWindow* anyWindow(Simulated::Random& random);
    std::string speak(Simulated::Random& random);
    QQuickItem* dear(Simulated::Random& random, const std::vector<QQuickItem*>& items);
    void pressed(QQuickItem& item);
    void click(QQuickWindow& window, QPoint place);
    void strike(QQuickWindow& window, Qt::Key key, Qt::KeyboardModifiers modifiers,
                const QString& text = {});

    Session& session_;
    std::vector<std::string> agreed_;
    std::map<std::string, int> presses_;
};

} // namespace pacelet::torture
