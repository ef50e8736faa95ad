#include "tools/torture/Watch.h"

#include <QQuickItem>
#include <QRegularExpression>

#include <fmt/format.h>

#include <utility>

namespace pacelet::torture {

namespace {

QString& warnings() {
    static QString heard;
    return heard;
}

void hear(QtMsgType type, const QMessageLogContext&, const QString& message) {
    // No desktop stands around these windows.
    const bool isAmiss = message.contains(u"This plugin does not") ||
                         message.contains(u"QPlatformNativeInterface::systemTrayWindowChanged");
    if (type != QtDebugMsg && type != QtInfoMsg && !isAmiss) {
        warnings() += message + u'\n';
    }
}

/// Every sentence about a fix, and every question.
const QRegularExpression& knownToasts() {
    static const QRegularExpression all{QStringLiteral(
        "^(Done|Cancelled|.+ already quit|.+ is still running|.+ is protected, so Pacelet won't "
        "quit it\\.|Couldn't change Start at login\\.|Couldn't finish: .+|Choose Apple menu > "
        "Restart\\..*|You may not restart "
        ".+)$")};
    return all;
}

const QRegularExpression& knownQuestions() {
    static const QRegularExpression all{QStringLiteral(
        "^(Quit .+\\?|.+ isn't responding\\.|Rebuild the Spotlight index\\?|Restart your .+\\?|.+ "
        "won't quit\\. Restart your .+|Test your internet speed\\?|Clear usage "
        "history\\?|(Close|Merge) "
        ".+\\?|Pacelet goes on without its window\\.)$")};
    return all;
}

/// What a text shows when a figure or a name was missing.
const QRegularExpression& raw() {
    static const QRegularExpression all{
        QStringLiteral("\\b(undefined|NaN|nan|inf|null)\\b|\\[object|QVariant|%[1-9]\\b|(^|[ "
                       "(])-\\d+(\\.\\d+)? ?(%|[KMGT]B|s|m|h|d)\\b")};
    return all;
}

void lookAtTexts(QQuickWindow& window) {
    forEachSeen(*window.contentItem(), [](const QQuickItem& item) {
        if (item.inherits("QQuickText")) {
            const QString text = item.property("text").toString();
            hold(!raw().match(text).hasMatch(), "text", text.toStdString());
        }
    });
}

void lookAtQuestions(QQuickWindow& window) {
    const auto asked = askedIn(window);
    std::string titles;
    for (const Asking& asking : asked) {
        titles += asking.title + "; ";
        hold(knownQuestions().match(QString::fromStdString(asking.title)).hasMatch(), "words",
             asking.title);
    }
    hold(asked.size() <= 1, "one question", titles);
}

void lookAtFocus(QQuickWindow& window) {
    if (!window.isActive()) {
        return;
    }
    const QQuickItem* const holder = window.activeFocusItem();
    hold(holder != nullptr, "focus", "nothing has it");
    // Types are numbered as they are loaded, which is not always in one order.
    const std::string name = QString{QLatin1StringView{holder->metaObject()->className()}}
                                 .section(u'_', 0, 0)
                                 .toStdString();
    hold(holder->isVisible() && holder->isEnabled(), "focus", name + " cannot be seen or used");
    const auto modals = modalsIn(window);
    if (!modals.empty()) {
        bool inside = false;
        for (const QQuickItem* item = holder; item != nullptr; item = item->parentItem()) {
            inside = inside || item == modals.back();
        }
        hold(inside, "focus", name + " stands behind a question or a sheet");
    }
}

/// The first cause stands at the top of the overview, and no other.
void lookAtHero(Application& application) {
    QQuickWindow& window = *application.window();
    const Finding* const hero = application.monitor().result().hero();
    if (hero == nullptr || application.router().screen() != Screen::overview) {
        return;
    }
    const QString headline = QString::fromStdString(hero->headline());
    bool isSeen = false;
    forEachSeen(*window.contentItem(), [&](const QQuickItem& item) {
        isSeen = isSeen || (item.inherits("QQuickText") && item.property("text") == headline);
    });
    hold(isSeen, "hero", "not on the overview: " + hero->headline());
}

} // namespace

void hold(bool holds, const std::string& invariant, const std::string& what) {
    if (!holds) {
        throw Broken{invariant + ": " + what};
    }
}

void Watch::hearWarnings() {
    qInstallMessageHandler(hear);
}

void Watch::look(Session& session) {
    const std::string heard = std::exchange(warnings(), {}).toStdString();
    hold(heard.empty(), "warning", heard);
    Application& application = session.application();
    for (QQuickWindow* const window : windowsOnShow(application)) {
        lookAtQuestions(*window);
        lookAtFocus(*window);
        lookAtTexts(*window);
    }
    if (application.window() != nullptr && application.monitor().windowVisible()) {
        lookAtHero(application);
    }
    if (const auto& toast = application.actions().toast()) {
        hold(knownToasts().match(QString::fromStdString(*toast)).hasMatch(), "words", *toast);
    }
    if (const auto& problem = application.monitor().error()) {
        hold(*problem == "Couldn't read processes. Retrying.", "words", *problem);
    }
}

} // namespace pacelet::torture
