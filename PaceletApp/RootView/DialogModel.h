#pragma once

#include "PaceletApp/FixActions/FixActions.h"

#include <QObject>
#include <QString>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// The dialog over the window: a question about a fix, or else the alert about an application that
/// will not quit. One at a time. The words stay while the dialog fades.
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
    /// `actions` outlives this.
    explicit DialogModel(FixActions& actions, QObject* parent = nullptr);

    bool isOpen() const { return confirming() || stuck(); }

    bool confirming() const { return !shown_.isNull(); }
    QString title() const;
    QString message() const;
    QString confirmText() const;
    bool destructive() const { return question_.destructive; }

    bool stuck() const { return stuck_; }
    const QString& stuckTitle() const { return stuckTitle_; }

    Q_INVOKABLE void confirm() { actions_.acceptConfirmation(); }
    Q_INVOKABLE void cancel() { actions_.dismissConfirmation(); }
    Q_INVOKABLE void restart();
    Q_INVOKABLE void dismissStuck() { actions_.dismissStuckAlert(); }

Q_SIGNALS:
    void changed();

private:
    void refresh();

    FixActions& actions_;
    QUuid shown_; ///< the question on screen; null for none
    Question question_;
    bool stuck_ = false;
    QString stuckTitle_;
};

} // namespace pacelet
