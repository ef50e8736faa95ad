#include "PaceletApp/SettingsView/SettingsModel.h"

#include "Core/Platform/Platform.h"
#include "PaceletApp/Scheduler/Detach.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"
#include "PaceletApp/Support/StartAtLogin.h"

#include <utility>

namespace pacelet {

namespace {

void clearIgnoringFailure(const auto& store) {
    try {
        store.clear();
    } catch (const UsageStoreError&) {
        // What is left ages out with the next prunes.
        return;
    }
}

} // namespace

SettingsModel::SettingsModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      objects_{objects},
      startAtLogin_{startsAtLogin(objects.platform.loginItems)},
      question_{objects.scheduler} {
    connect(&objects.preferences, &AppPreferences::showMenuBarChanged, this,
            &SettingsModel::showMenuBarChanged);
    connect(&objects.monitor, &Monitor::changed, this, [this](const Fields& fields) {
        if (fields.hold(objects_.monitor.keepHistory)) {
            Q_EMIT keepHistoryChanged();
        }
    });
    connect(&objects.preferences, &AppPreferences::troubleChanged, this,
            &SettingsModel::troubleChanged);
}

QString SettingsModel::loginNote() const {
    return qtText(startAtLoginNote());
}

QString SettingsModel::clearTitle() const {
    return cleared_ ? QStringLiteral("History cleared") : QStringLiteral("Clear usage history…");
}

QString SettingsModel::trouble() const {
    switch (objects_.preferences.trouble()) {
    case PreferencesTrouble::flawed:
        return QStringLiteral("Some of your earlier settings couldn't be read. The file that held "
                              "them is kept.");
    case PreferencesTrouble::unwritable:
        return QStringLiteral("Settings can't be saved. What you change here lasts until Pacelet "
                              "quits.");
    case PreferencesTrouble::none:
        break;
    }
    return {};
}

void SettingsModel::setStartAtLogin(bool on) {
    if (on == startAtLogin_) {
        return;
    }
    startAtLogin_ = on;
    if (!setStartsAtLogin(objects_.platform.loginItems, on)) {
        startAtLogin_ = startsAtLogin(objects_.platform.loginItems);
    }
    Q_EMIT startAtLoginChanged();
}

void SettingsModel::setChecksForUpdates(bool on) {
    if (on != checksForUpdates()) {
        objects_.updater.setAutomaticallyChecksForUpdates(on);
        Q_EMIT checksForUpdatesChanged();
    }
}

void SettingsModel::askClear() {
    question_.ask(this,
                  {.title = sentence("Clear usage history?"),
                   .message = sentence("This deletes the CPU and memory history Pacelet has "
                                       "recorded. Your upgrade advice starts over."),
                   .confirm = "Clear History",
                   .destructive = true},
                  [this] { clearHistory(); });
}

void SettingsModel::clearHistory() {
    objects_.monitor.forgetEarlier();
    detach(clear(this, objects_.scheduler, objects_.monitor.usageStore(),
                 objects_.monitor.causeStore()));
}

QCoro::Task<> SettingsModel::clear(QPointer<SettingsModel> model, Scheduler& scheduler,
                                   UsageStore usage, CauseStore causes) {
    auto clearing =
        scheduler.runInBackground([usage = std::move(usage), causes = std::move(causes)] {
            clearIgnoringFailure(usage);
            clearIgnoringFailure(causes);
        });
    co_await clearing;
    if (model) {
        model->cleared_ = true;
    }
}

} // namespace pacelet
