#include "PaceletApp/RootView/DialogModel.h"

#include "PaceletApp/Support/QtText.h"

namespace pacelet {

DialogModel::DialogModel(FixActions& actions, QObject* parent)
    : QObject{parent}, actions_{actions} {
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
    Q_EMIT changed();
}

void DialogModel::restart() {
    actions_.dismissStuckAlert();
    actions_.confirmRestart();
}

} // namespace pacelet
