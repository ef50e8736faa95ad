#include "tests/PaceletApp/Support/SeenTexts.h"
#include "tools/gallery/shots/Shot.h"

#include <QAccessible>
#include <QQuickWindow>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <set>
#include <string>

// Looks at every picture of the gallery as a user would who reads each word, and as one who hears
// it. The scale is that of the environment.

namespace pacelet::gallery {
namespace {

/// Everything that a screen reader finds from here on.
void collect(QAccessibleInterface* face, std::set<QObject*>& found) {
    found.insert(face->object());
    for (int index = 0; index < face->childCount(); ++index) {
        QAccessibleInterface* const child = face->child(index);
        ASSERT_TRUE(child != nullptr && child->isValid());
        EXPECT_EQ(face->indexOfChild(child), index);
        collect(child, found);
    }
}

/// Whether the text, or what it stands in, says it to those who cannot see it. A chart says what it
/// shows in its own words, without those at its axes; a dash says nothing.
bool isHeard(QQuickItem& text, const std::set<QObject*>& reachable) {
    const QString words = text.property("text").toString();
    if (words == QStringLiteral("—")) {
        return true;
    }
    for (QQuickItem* item = &text; item != nullptr; item = item->parentItem()) {
        if (!reachable.contains(item)) {
            continue;
        }
        QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(item);
        const QString said =
            face->text(QAccessible::Name) + u'\n' + face->text(QAccessible::Description);
        return face->role() == QAccessible::Chart ? said.size() > 1 : said.contains(words);
    }
    return false;
}

void expectWhole(QQuickWindow& window) {
    forEachText(*window.contentItem(), [&](QQuickItem& text) {
        const std::string words = text.property("text").toString().toStdString();
        const QRectF edges = text.mapRectToScene(text.boundingRect());
        EXPECT_TRUE(!text.property("truncated").toBool() || text.property("boundless").toBool())
            << "cut: " << words;
        EXPECT_TRUE(edges.left() >= -1 && edges.right() <= window.width() + 1)
            << "out of the window: " << words;
    });
}

void expectHeard(QQuickWindow& window) {
    std::set<QObject*> reachable;
    collect(QAccessible::queryAccessibleInterface(&window), reachable);
    forEachText(*window.contentItem(), [&](QQuickItem& text) {
        EXPECT_TRUE(isHeard(text, reachable))
            << "not heard: " << text.property("text").toString().toStdString();
    });
}

TEST(Screens, areReadWholeAndHeardWhole) {
    for (const Shot& shot : allShots()) {
        SCOPED_TRACE(shot.name);
        const std::unique_ptr<Session> session = sessionOf(shot);
        shot.drive(*session);
        Application& application = session->application();
        QQuickWindow* const window = shot.window ? shot.window(application) : application.window();
        ASSERT_NE(window, nullptr);
        for (const int width : {1000, 1200, 1600}) {
            SCOPED_TRACE(width);
            if (!shot.size.isEmpty()) {
                window->resize(width, shot.size.height());
            }
            session->pass(0);
            if (!shot.boundless) {
                expectWhole(*window);
            }
            expectHeard(*window);
        }
    }
}

/// Names of things that are called so anywhere, and what is said of a machine that is a Mac: the
/// simulated one goes on being it.
QString withoutNames(QString text) {
    static const QRegularExpression names{QStringLiteral(
        "com\\.apple\\S*|Apple M\\d+|/\\S*|^Mac (mini|Pro)\\b|^This is an Intel Mac\\..*")};
    return text.remove(names);
}

TEST(Words, areNoMacsWhereTheMachineIsNone) {
    const QRegularExpression onMac{QStringLiteral("\\b(Macs?|macOS|Apple)\\b")};
    const auto expectTrue = [&](const QString& text) {
        EXPECT_FALSE(onMac.match(withoutNames(text)).hasMatch()) << text.toStdString();
    };
    for (const Shot& shot : allShots()) {
        SCOPED_TRACE(shot.name);
        const std::unique_ptr<Session> session =
            shot.capture.empty()
                ? std::make_unique<Session>(Simulated::makeScenario(shot.scenario, 1),
                                            Session::bundledCatalog(),
                                            OperatingSystem::linuxDesktop)
                : sessionOf(shot);
        shot.drive(*session);
        Application& application = session->application();
        QQuickWindow* const window = shot.window ? shot.window(application) : application.window();
        ASSERT_NE(window, nullptr);
        forEachText(*window->contentItem(),
                    [&](QQuickItem& text) { expectTrue(text.property("text").toString()); });
        for (const QQuickItem* const item : window->findChildren<QQuickItem*>()) {
            expectTrue(item->property("tip").toString());
        }
        std::set<QObject*> reachable;
        collect(QAccessible::queryAccessibleInterface(window), reachable);
        for (QObject* const each : reachable) {
            QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(each);
            expectTrue(face->text(QAccessible::Name));
            expectTrue(face->text(QAccessible::Description));
        }
    }
}

} // namespace
} // namespace pacelet::gallery
