#pragma once

#include "PaceletApp/Support/Question.h"

// Not first: moc cannot read <chrono> before anything else of the library.
#include "Core/Support/Time.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <optional>
#include <string>

namespace pacelet {

class Scheduler;

/// What the `QuestionDialog` of a window asks, one question at a time, whoever asks. The words stay
/// while the dialog fades.
///
/// A press that was meant for one question must not answer another: for a moment after a question
/// took the place of one before it, no button does anything.
class QuestionModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the model that asks")
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QString confirmText READ confirmText NOTIFY changed)
    Q_PROPERTY(QString cancelText READ cancelText NOTIFY changed)
    Q_PROPERTY(bool destructive READ destructive NOTIFY changed)
    Q_PROPERTY(int paragraphLines READ paragraphLines NOTIFY changed)

public:
    using Action = std::function<void()>;

    /// How long nothing can be answered after a question was replaced.
    static constexpr Seconds calm{0.5};

    /// `scheduler` outlives this.
    explicit QuestionModel(Scheduler& scheduler, QObject* parent = nullptr);

    bool isOpen() const { return isOpen_; }
    bool isAskedBy(const QObject* asker) const { return isOpen_ && asker_ == asker; }
    QString title() const;
    QString message() const;
    QString confirmText() const;
    QString cancelText() const;
    bool destructive() const { return question_.destructive; }
    int paragraphLines() const { return question_.paragraphLines; }

    /// Shows the question, in place of one that is open. Both buttons close it, and then do what is
    /// said here. It goes with `asker`.
    void ask(const QObject* asker, Question question, Action confirmed, Action cancelled = {});
    /// Tells more, or less, about what `asker` asks already.
    void setMessage(const QObject* asker, std::string message);
    /// Closes unanswered what `asker` asks.
    void withdraw(const QObject* asker);

    Q_INVOKABLE void confirm() { answer(confirmed_); }
    Q_INVOKABLE void cancel() { answer(cancelled_); }

Q_SIGNALS:
    void changed();
    /// Nothing is asked any more. Who answered one question with the next is past that.
    void freed();

private:
    void close();
    void answer(Action action);

    Scheduler& scheduler_;
    bool isOpen_ = false;
    const QObject* asker_ = nullptr; ///< of the last question; may be gone
    Question question_;
    Action confirmed_;
    Action cancelled_;
    std::optional<MonotonicTime> goneAt_;     ///< when the last one closed
    std::optional<MonotonicTime> replacedAt_; ///< when one came right after another
};

} // namespace pacelet
