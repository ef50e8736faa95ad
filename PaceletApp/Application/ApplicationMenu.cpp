#include "PaceletApp/Application/ApplicationMenu.h"

#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Router/Commands.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>

#include <utility>

namespace pacelet {

namespace {

QAction::MenuRole roleOf(Command::Action action) {
    switch (action) {
    case Command::Action::settings:
        return QAction::PreferencesRole;
    case Command::Action::checkForUpdates:
        return QAction::ApplicationSpecificRole;
    case Command::Action::quit:
        return QAction::QuitRole;
    case Command::Action::checkNow:
    case Command::Action::find:
    case Command::Action::showScreen:
    case Command::Action::closeWindow:
        break;
    }
    return QAction::NoRole; // or Qt guesses one from the words
}

} // namespace

ApplicationMenu::ApplicationMenu(Application& application, std::function<void()> showAbout) {
    application.haveMenuBar();
    QMenu* const file = bar_.addMenu(qtText(sentence("File")));
    QMenu* const view = bar_.addMenu(qtText(sentence("View")));
    if (showAbout) {
        QAction* const about = file->addAction(qtText(sentence("About Pacelet")));
        about->setMenuRole(QAction::AboutRole);
        connect(about, &QAction::triggered, this, std::move(showAbout));
    }
    for (const Command& command : commands(application.updater().isConfigured())) {
        const QAction::MenuRole role = roleOf(command.action);
        const bool isOfView =
            role == QAction::NoRole && command.action != Command::Action::closeWindow;
        if (isOfView && command.startsGroup) {
            view->addSeparator();
        }
        QAction* const item = (isOfView ? view : file)->addAction(qtText(command.title));
        item->setMenuRole(role);
        item->setShortcut({qtText(command.shortcut), QKeySequence::PortableText});
        connect(item, &QAction::triggered, this,
                [&application, command] { application.perform(command); });
        if (command.action == Command::Action::checkForUpdates) {
            AppUpdater& updater = application.updater();
            item->setEnabled(updater.canCheckForUpdates());
            connect(&updater, &AppUpdater::canCheckForUpdatesChanged, item,
                    [item, &updater] { item->setEnabled(updater.canCheckForUpdates()); });
        }
    }
}

} // namespace pacelet
