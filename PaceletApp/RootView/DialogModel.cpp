#include "PaceletApp/RootView/DialogModel.h"

#include "PaceletApp/Support/QtText.h"

#include <optional>

namespace pacelet {

namespace {

DialogLook lookOf(const FixActions::Confirmation& confirmation) {
    const Question& question = confirmation.question;
    DialogLook look;
    look.id = confirmation.id.toString(QUuid::WithoutBraces);
    look.title = qtText(question.title);
    look.message = qtText(question.message);
    look.confirm = qtText(question.confirm);
    look.cancel = QStringLiteral("Cancel");
    look.destructive = question.destructive;
    return look;
}

DialogLook stuckLook(const std::string& app) {
    DialogLook look;
    look.id = QStringLiteral("stuck");
    look.title = qtText(FixTexts::stuckTitle(app));
    look.confirm = QStringLiteral("Restart…");
    look.cancel = QStringLiteral("Not now");
    return look;
}

std::optional<DialogLook> dialogOf(const FixActions& actions) {
    if (actions.confirmation()) {
        return lookOf(*actions.confirmation());
    }
    if (actions.stuckAlert()) {
        return stuckLook(*actions.stuckAlert());
    }
    return std::nullopt;
}

} // namespace

DialogModel::DialogModel(FixActions& actions, QObject* parent)
    : QObject{parent}, actions_{actions} {
    connect(&actions, &FixActions::confirmationChanged, this, &DialogModel::refresh);
    connect(&actions, &FixActions::stuckAlertChanged, this, &DialogModel::refresh);
    refresh();
}

void DialogModel::refresh() {
    const std::optional<DialogLook> look = dialogOf(actions_);
    if (look.has_value() == open_ && (!look || *look == look_)) {
        return;
    }
    open_ = look.has_value();
    look_ = look.value_or(look_);
    Q_EMIT changed();
}

void DialogModel::confirm() {
    if (actions_.confirmation()) {
        actions_.acceptConfirmation();
    } else if (actions_.stuckAlert()) {
        actions_.dismissStuckAlert();
        actions_.confirmRestart();
    }
}

void DialogModel::cancel() {
    if (actions_.confirmation()) {
        actions_.dismissConfirmation();
    } else {
        actions_.dismissStuckAlert();
    }
}

} // namespace pacelet
