#pragma once

#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/Scheduler/Scheduler.h"

#include <QObject>
#include <QString>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace pacelet {

/// The dialog over the window: a question about a fix, or else the alert about an application that
/// will not quit. One at a time. The words stay while the dialog fades.
///
/// A press that was meant for one question must not answer another: for a moment after a question
/// took the place of one before it, no button does anything.
class DialogModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    Q_PROPERTY(bool confirming READ confirming NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QString confirmText READ confirmText NOTIFY changed)
    Q_PROPERTY(bool destructive READ destructive NOTIFY changed)
    Q_PROPERTY(bool stuck READ stuck NOTIFY changed)
    Q_PROPERTY(QString stuckTitle READ stuckTitle NOTIFY changed)

public:
    /// How long nothing can be answered after a question was replaced.
    static constexpr Seconds calm{0.5};

    /// Both outlive this.
    DialogModel(FixActions& actions, Scheduler& scheduler, QObject* parent = nullptr);

    bool isOpen() const { return confirming() || stuck(); }

    bool confirming() const { return !shown_.isNull(); }
    QString title() const;
    QString message() const;
    QString confirmText() const;
    bool destructive() const { return question_.destructive; }

    bool stuck() const { return stuck_; }
    const QString& stuckTitle() const { return stuckTitle_; }

    Q_INVOKABLE void confirm();
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void restart();
    Q_INVOKABLE void dismissStuck();

Q_SIGNALS:
    void changed();

private:
    void refresh();
    void noteReplacement(bool wasOpen, bool isAnother);
    bool isCalming() const;

    FixActions& actions_;
    Scheduler& scheduler_;
    QUuid shown_; ///< the question on screen; null for none
    Question question_;
    bool stuck_ = false;
    QString stuckTitle_;
    std::optional<MonotonicTime> goneAt_;     ///< when the last dialog was answered
    std::optional<MonotonicTime> replacedAt_; ///< when a dialog came right after another
};

} // namespace pacelet
