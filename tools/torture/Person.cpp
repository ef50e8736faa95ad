#include "tools/torture/Person.h"

#include "tools/torture/Draw.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QPointer>
#include <QRegularExpression>
#include <QTest>
#include <QWheelEvent>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace pacelet::torture {

namespace {

using Simulated::Random;

bool isInside(const QQuickItem* item, const QQuickItem* whole) {
    while (item != nullptr && item != whole) {
        item = item->parentItem();
    }
    return item != nullptr;
}

/// What acts when it is pressed.
std::vector<QQuickItem*> pressable(QQuickItem& below) {
    std::vector<QQuickItem*> found;
    forEachSeen(below, [&](QQuickItem& item) {
        const bool acts = item.activeFocusOnTab() || item.inherits("QQuickAbstractButton");
        if (acts && item.isEnabled() && item.width() > 0 && item.height() > 0) {
            found.push_back(&item);
        }
    });
    return found;
}

/// All that a screen reader can act upon, below this.
void collectActing(QAccessibleInterface* face, std::vector<QAccessibleInterface*>& found) {
    if (face == nullptr || !face->isValid() || face->state().invisible) {
        return;
    }
    if (face->actionInterface() != nullptr && !face->state().disabled) {
        found.push_back(face);
    }
    for (int place = 0; place < face->childCount(); ++place) {
        collectActing(face->child(place), found);
    }
}

std::string nameOf(QQuickItem& item) {
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(&item);
    const QString spoken = face != nullptr ? face->text(QAccessible::Name) : QString{};
    return spoken.isEmpty() ? item.metaObject()->className() : spoken.toStdString();
}

/// What control it is, whatever machine it speaks of. Types are numbered as they are loaded.
std::string kindOf(QQuickItem& item) {
    const QString type = QString::fromLatin1(item.metaObject()->className()).section(u'_', 0, 0);
    if (type == u"QQuickAbstractButton" || type == u"NotedCauseRow" || type == u"CheckBox") {
        return type.toStdString(); // a row, named for what it tells of
    }
    static const QRegularExpression data{
        QStringLiteral("(?<=Quit |Close |about |Review |Earlier: ).+|[\\d.,]+|(?<=^.{24}).+")};
    return (type + u' ' + QString::fromStdString(nameOf(item)).remove(data)).toStdString();
}

QPoint middle(const QQuickItem& item) {
    return item.mapToScene(item.boundingRect().center()).toPoint();
}

std::vector<QObject*> popupsOnShow(QQuickWindow& window) {
    std::vector<QObject*> found;
    for (QObject* const child : window.findChildren<QObject*>()) {
        if (child->inherits("QQuickPopup") && child->property("visible").toBool()) {
            found.push_back(child);
        }
    }
    return found;
}

constexpr std::array keys{Qt::Key_Tab,    Qt::Key_Tab,      Qt::Key_Backtab, Qt::Key_Return,
                          Qt::Key_Space,  Qt::Key_Escape,   Qt::Key_Up,      Qt::Key_Down,
                          Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Home,    Qt::Key_End,
                          Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Delete};
constexpr std::array shortcuts{Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_4,     Qt::Key_5,
                               Qt::Key_R, Qt::Key_F, Qt::Key_W, Qt::Key_Comma, Qt::Key_A};
/// How the names of those buttons begin that do something to the machine.
constexpr std::array<std::string_view, 9> actions{
    "Quit ", "Review", "Rebuild", "Restart", "Close ", "Merge", "Continue", "Clear", "Run speed"};
constexpr std::array words{"s", "chrome", "zzz", "Mail ", "\"", "1"};

} // namespace

std::vector<Asking> askedIn(QQuickWindow& window) {
    std::vector<Asking> asked;
    for (QObject* const popup : popupsOnShow(window)) {
        const QVariant caption = popup->property("confirmText");
        auto* const content = popup->property("contentItem").value<QQuickItem*>();
        if (!caption.isValid() || content == nullptr) {
            continue;
        }
        Asking asking{popup->property("title").toString().toStdString()};
        forEachSeen(*content, [&](QQuickItem& item) {
            if (item.inherits("QQuickAbstractButton") && item.property("text") == caption) {
                asking.confirm = &item;
            }
        });
        asked.push_back(asking);
    }
    return asked;
}

std::vector<QQuickItem*> modalsIn(QQuickWindow& window) {
    std::vector<QQuickItem*> modals;
    for (QObject* const popup : popupsOnShow(window)) {
        auto* const content = popup->property("contentItem").value<QQuickItem*>();
        if (popup->property("modal").toBool() && content != nullptr) {
            modals.push_back(content->parentItem());
        }
    }
    // As they are painted.
    std::ranges::sort(modals, {}, [](const QQuickItem* item) {
        return std::pair{item->z(), item->parentItem()->childItems().indexOf(item)};
    });
    return modals;
}

std::vector<QQuickWindow*> windowsOnShow(Application& application) {
    std::vector<QQuickWindow*> shown{application.window(), application.settings(),
                                     application.panel()};
    std::erase_if(shown, [](const QQuickWindow* window) {
        return window == nullptr || !window->isVisible() ||
               window->visibility() == QWindow::Minimized;
    });
    return shown;
}

std::string Person::act(Verb verb, Random& random) {
    switch (verb) {
    case Verb::press:
        return press(random);
    case Verb::speak:
        return speak(random);
    case Verb::key:
        return key(random);
    case Verb::type:
        return type(random);
    case Verb::point:
        return point(random);
    default:
        return window(random);
    }
}

/// Where nothing is open, they open the window first.
QQuickWindow* Person::anyWindow(Random& random) {
    Application& application = session_.application();
    auto shown = windowsOnShow(application);
    if (shown.empty()) {
        application.showWindow();
        session_.pass(0);
        shown = windowsOnShow(application);
    }
    return shown.empty() ? nullptr : anyOf(random, shown);
}

void Person::click(QQuickWindow& window, QPoint place) {
    for (const Asking& asking : askedIn(window)) {
        const QQuickItem* const button = asking.confirm;
        if (button != nullptr && button->contains(button->mapFromScene(place))) {
            agreed_.push_back(asking.title);
        }
    }
    const QPointer<QQuickWindow> alive{&window};
    QTest::mouseMove(&window, place);
    if (alive) {
        QTest::mousePress(&window, Qt::LeftButton, {}, place);
    }
    if (alive) {
        QTest::mouseRelease(&window, Qt::LeftButton, {}, place);
    }
}

void Person::strike(QQuickWindow& window, Qt::Key key, Qt::KeyboardModifiers modifiers,
                    const QString& text) {
    const bool agrees = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
    for (const Asking& asking : askedIn(window)) {
        if (agrees && asking.confirm != nullptr && asking.confirm->hasActiveFocus()) {
            agreed_.push_back(asking.title);
        }
    }
    // A window may go between any two of these.
    const QPointer<QQuickWindow> alive{&window};
    const auto send = [&](bool down, Qt::Key each, Qt::KeyboardModifiers held) {
        if (alive) {
            QTest::simulateEvent(alive.get(), down, each, held, text, false);
        }
    };
    if (modifiers == Qt::ControlModifier) {
        send(true, Qt::Key_Control, {});
    }
    send(true, key, modifiers);
    send(false, key, modifiers);
    if (modifiers == Qt::ControlModifier) {
        send(false, Qt::Key_Control, {});
    }
}

void Person::pressed(QQuickItem& item) {
    ++presses_[kindOf(item)];
}

/// One of them, often one that does something to the machine, or that was pressed least so far.
QQuickItem* Person::dear(Random& random, const std::vector<QQuickItem*>& items) {
    for (QQuickItem* const item : items) {
        presses_.try_emplace(kindOf(*item));
    }
    if (chance(random, 25)) {
        return *std::ranges::min_element(
            items, {}, [this](QQuickItem* item) { return presses_.at(kindOf(*item)); });
    }
    if (chance(random, 40)) {
        std::vector<QQuickItem*> acting;
        std::ranges::copy_if(items, std::back_inserter(acting), [](QQuickItem* item) {
            const std::string name = nameOf(*item);
            return std::ranges::any_of(
                actions, [&](std::string_view action) { return name.starts_with(action); });
        });
        if (!acting.empty()) {
            return anyOf(random, acting);
        }
    }
    return anyOf(random, items);
}

std::string Person::press(Random& random) {
    QQuickWindow* const window = anyWindow(random);
    if (window == nullptr) {
        return "finds no window";
    }
    auto items = pressable(*window->contentItem());
    const auto modals = modalsIn(*window);
    // What stands behind a question is tried at times, too.
    if (!modals.empty() && chance(random, 85)) {
        std::erase_if(items,
                      [&](const QQuickItem* item) { return !isInside(item, modals.back()); });
    }
    if (items.empty()) {
        return "finds nothing to press";
    }
    const auto asked = askedIn(*window);
    const bool agrees = !asked.empty() && asked.back().confirm != nullptr && chance(random, 45);
    QQuickItem& item = agrees ? *asked.back().confirm : *dear(random, items);
    const std::string name = nameOf(item);
    const QPoint place = middle(item);
    if (QRect{{}, window->size()}.contains(place) && chance(random, 75)) {
        pressed(item);
        click(*window, place);
        return fmt::format("clicks on \"{}\"", name);
    }
    if (modals.empty() || isInside(&item, modals.back())) {
        pressed(item);
        item.forceActiveFocus(Qt::TabFocusReason);
        strike(*window, chance(random, 50) ? Qt::Key_Space : Qt::Key_Return, {});
        return fmt::format("presses \"{}\" by key", name);
    }
    return fmt::format("cannot reach \"{}\"", name);
}

std::string Person::speak(Random& random) {
    QQuickWindow* const window = anyWindow(random);
    std::vector<QAccessibleInterface*> faces;
    if (window != nullptr) {
        collectActing(QAccessible::queryAccessibleInterface(window), faces);
    }
    if (faces.empty()) {
        return "hears of nothing to press";
    }
    QAccessibleInterface& face = *anyOf(random, faces);
    QStringList names = face.actionInterface()->actionNames();
    auto* const item = qobject_cast<QQuickItem*>(face.object());
    const auto modals = modalsIn(*window);
    // It presses what stands behind a question, too, but the focus stays where Qt has it.
    if (chance(random, 85) || !(modals.empty() || isInside(item, modals.back()))) {
        names.removeAll(QAccessibleActionInterface::setFocusAction());
    }
    if (names.empty()) {
        return "hears of nothing to do";
    }
    const QString action = anyOf(random, names);
    const std::string name = item != nullptr ? nameOf(*item) : "the window";
    for (const Asking& asking : askedIn(*window)) {
        if (item != nullptr && asking.confirm == item &&
            action == QAccessibleActionInterface::pressAction()) {
            agreed_.push_back(asking.title);
        }
    }
    if (item != nullptr && action != QAccessibleActionInterface::setFocusAction()) {
        pressed(*item);
    }
    face.actionInterface()->doAction(action);
    return fmt::format("has the screen reader do \"{}\" to \"{}\"", action.toStdString(), name);
}

std::string Person::key(Random& random) {
    QQuickWindow* const window = anyWindow(random);
    if (window == nullptr) {
        return "finds no window";
    }
    const bool isShortcut = chance(random, 40);
    const Qt::Key key = isShortcut ? anyOf(random, shortcuts) : anyOf(random, keys);
    strike(*window, key, isShortcut ? Qt::ControlModifier : Qt::NoModifier);
    return "strikes " + QKeySequence{isShortcut ? Qt::CTRL | key : QKeyCombination{key}}
                            .toString(QKeySequence::PortableText)
                            .toStdString();
}

std::string Person::type(Random& random) {
    const QPointer<QQuickWindow> window{anyWindow(random)};
    const std::string text = anyOf(random, words);
    for (const char letter : text) {
        if (window) {
            strike(*window, QTest::asciiToKey(letter), {}, QString{QLatin1Char{letter}});
        }
    }
    return fmt::format("types \"{}\"", text);
}

std::string Person::point(Random& random) {
    QQuickWindow* const window = anyWindow(random);
    if (window == nullptr) {
        return "finds no window";
    }
    const QPoint place{static_cast<int>(random.integer(0, window->width() - 1)),
                       static_cast<int>(random.integer(0, window->height() - 1))};
    if (chance(random, 50)) {
        click(*window, place);
        return fmt::format("clicks at {},{}", place.x(), place.y());
    }
    const QPoint turn{0, static_cast<int>(random.integer(-20, 20)) * 120};
    QWheelEvent wheel{place, window->mapToGlobal(place), {},   turn, {},
                      {},    Qt::NoScrollPhase,          false};
    QCoreApplication::sendEvent(window, &wheel);
    return fmt::format("turns the wheel by {}", turn.y());
}

std::string Person::window(Random& random) {
    Application& application = session_.application();
    switch (random.integer(0, 7)) {
    case 0:
    case 1:
        application.showWindow();
        return "opens the window";
    case 2:
        application.closeWindow();
        return "closes the window";
    case 3:
        application.showSettings();
        return "opens the settings";
    case 4:
        application.openPanel({});
        return "opens the panel";
    case 5:
        if (application.window() != nullptr) {
            application.window()->showMinimized();
        }
        return "minimises the window";
    case 6:
        if (application.window() != nullptr) {
            application.window()->showNormal();
            application.window()->resize(static_cast<int>(random.integer(1000, 1600)),
                                         static_cast<int>(random.integer(480, 1000)));
        }
        return "changes the window's size";
    default:
        if (application.settings() != nullptr && chance(random, 50)) {
            application.settings()->close();
            return "closes the settings";
        }
        application.closePanel();
        return "closes the panel";
    }
}

} // namespace pacelet::torture
