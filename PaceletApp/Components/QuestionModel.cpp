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

void QuestionModel::ask(const QObject* asker, Question question, Action confirmed,
                        Action cancelled) {
    // Whoever asks the same once more, after an answer, means it.
    const bool isAnother = isOpen_ || question != question_;
    // Another question is another dialog: which button has the focus is decided anew.
    close();
    const MonotonicTime now = scheduler_.monotonicNow();
    if (isAnother && goneAt_ && now - *goneAt_ < calm) {
        replacedAt_ = now;
    }
    connect(asker, &QObject::destroyed, this, &QuestionModel::withdraw, Qt::UniqueConnection);
    asker_ = asker;
    question_ = std::move(question);
    confirmed_ = std::move(confirmed);
    cancelled_ = std::move(cancelled);
    isOpen_ = true;
    Q_EMIT changed();
}

void QuestionModel::setMessage(const QObject* asker, std::string message) {
    if (isAskedBy(asker) && message != question_.message) {
        question_.message = std::move(message);
        Q_EMIT changed();
    }
}

void QuestionModel::withdraw(const QObject* asker) {
    if (isAskedBy(asker)) {
        close();
        Q_EMIT freed();
    }
}

void QuestionModel::close() {
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
    close();
    if (action) {
        action();
    }
    if (!isOpen_) {
        Q_EMIT freed();
    }
}

} // namespace pacelet
