#include "PaceletApp/RootView/DialogModel.h"

#include "PaceletApp/Support/QtText.h"

namespace pacelet {

DialogModel::DialogModel(FixActions& actions, Scheduler& scheduler, QObject* parent)
    : QObject{parent}, actions_{actions}, scheduler_{scheduler} {
    connect(&actions, &FixActions::confirmationChanged, this, &DialogModel::refresh);
    connect(&actions, &FixActions::stuckAlertChanged, this, &DialogModel::refresh);
    refresh();
}

QString DialogModel::title() const {
    return qtText(question_.title);
}

QString DialogModel::message() const {
    return qtText(question_.message);
}

QString DialogModel::confirmText() const {
    return qtText(question_.confirm);
}

void DialogModel::refresh() {
    const auto& confirmation = actions_.confirmation();
    const QUuid wanted = confirmation ? confirmation->id : QUuid{};
    const bool wasOpen = isOpen();
    const bool wasStuck = stuck_;
    const QUuid before = shown_;
    if (wanted != shown_ && confirming()) {
        // Another question is another dialog: which button has the focus is decided anew.
        shown_ = {};
        Q_EMIT changed();
    }
    shown_ = wanted;
    if (confirmation) {
        question_ = confirmation->question;
    }
    stuck_ = actions_.stuckAlert().has_value() && !confirmation;
    if (actions_.stuckAlert()) {
        stuckTitle_ = qtText(FixTexts::stuckTitle(actions_.stuckAlert()));
    }
    noteReplacement(wasOpen, before != shown_ || wasStuck != stuck_);
    Q_EMIT changed();
}

void DialogModel::noteReplacement(bool wasOpen, bool isAnother) {
    if (!isAnother) {
        return;
    }
    const MonotonicTime now = scheduler_.monotonicNow();
    if (!isOpen()) {
        goneAt_ = now;
    } else if (wasOpen || (goneAt_ && now - *goneAt_ < calm)) {
        replacedAt_ = now;
    }
}

bool DialogModel::isCalming() const {
    return replacedAt_ && scheduler_.monotonicNow() - *replacedAt_ < calm;
}

void DialogModel::confirm() {
    if (!isCalming()) {
        actions_.acceptConfirmation();
    }
}

void DialogModel::cancel() {
    if (!isCalming()) {
        actions_.dismissConfirmation();
    }
}

void DialogModel::restart() {
    if (!isCalming()) {
        actions_.dismissStuckAlert();
        actions_.confirmRestart();
    }
}

void DialogModel::dismissStuck() {
    if (!isCalming()) {
        actions_.dismissStuckAlert();
    }
}

} // namespace pacelet
