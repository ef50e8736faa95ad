#pragma once

#include "PaceletApp/FixActions/FixActions.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// The words of one dialog.
struct DialogLook {
    Q_GADGET
    QML_VALUE_TYPE(dialogLook)
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString message MEMBER message CONSTANT)
    Q_PROPERTY(QString confirm MEMBER confirm CONSTANT)
    Q_PROPERTY(QString cancel MEMBER cancel CONSTANT)
    Q_PROPERTY(bool destructive MEMBER destructive CONSTANT)

public:
    QString id; ///< another one for each dialog; empty for no dialog
    QString title;
    QString message; ///< may be empty
    QString confirm;
    QString cancel;
    bool destructive = false;

    bool operator==(const DialogLook&) const = default;
};

/// The dialog over the window: a question about a fix, or else the alert about an application that
/// will not quit. One at a time.
class DialogModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    /// Keeps the words of the last dialog while no one is open, for the time in which it fades.
    Q_PROPERTY(pacelet::DialogLook look READ look NOTIFY changed)

public:
    explicit DialogModel(FixActions& actions, QObject* parent = nullptr);

    bool isOpen() const { return open_; }
    const DialogLook& look() const { return look_; }

    Q_INVOKABLE void confirm();
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void changed();

private:
    void refresh();

    FixActions& actions_;
    bool open_ = false;
    DialogLook look_;
};

} // namespace pacelet
