#include "PaceletApp/Components/QuestionModel.h"

#include "PaceletApp/Scheduler/Scheduler.h"
#include "PaceletApp/Support/QtText.h"

#include <utility>

namespace pacelet {

QuestionModel::QuestionModel(Scheduler& scheduler, QObject* parent)
    : QObject{parent},
      scheduler_{scheduler} {}

QString QuestionModel::title() const {
    return qtText(question_.title);
}

QString QuestionModel::message() const {
    return qtText(question_.message);
}

QString QuestionModel::confirmText() const {
    return qtText(question_.confirm);
}

QString QuestionModel::cancelText() const {
    return qtText(question_.cancel);
}

void QuestionModel::ask(Question question, Action confirmed, Action cancelled) {
    // Whoever asks the same once more, after an answer, means it.
    const bool isAnother = isOpen_ || question != question_;
    // Another question is another dialog: which button has the focus is decided anew.
    withdraw();
    const MonotonicTime now = scheduler_.monotonicNow();
    if (isAnother && goneAt_ && now - *goneAt_ < calm) {
        replacedAt_ = now;
    }
    question_ = std::move(question);
    confirmed_ = std::move(confirmed);
    cancelled_ = std::move(cancelled);
    isOpen_ = true;
    Q_EMIT changed();
}

void QuestionModel::setMessage(std::string message) {
    if (message != question_.message) {
        question_.message = std::move(message);
        Q_EMIT changed();
    }
}

void QuestionModel::withdraw() {
    if (std::exchange(isOpen_, false)) {
        goneAt_ = scheduler_.monotonicNow();
        Q_EMIT changed();
    }
}

/// By value: the action may ask the next question.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void QuestionModel::answer(Action action) {
    const bool isCalming = replacedAt_ && scheduler_.monotonicNow() - *replacedAt_ < calm;
    if (!isOpen_ || isCalming) {
        return;
    }
    withdraw();
    if (action) {
        action();
    }
}

} // namespace pacelet
