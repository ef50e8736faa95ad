#pragma once

#include "Core/Browser/ChromiumBrowser.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

namespace pacelet {

/// The sheet over the window: that of the first start, or else the tabs of a browser. What is shown
/// stays while the sheet fades.
class SheetModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    Q_PROPERTY(bool open READ isOpen NOTIFY openChanged)
    /// Whether Escape closes it.
    Q_PROPERTY(bool dismissable READ isDismissable NOTIFY contentChanged)
    /// The file in the QML module, empty for none, and the model that it binds to.
    Q_PROPERTY(QString file READ file NOTIFY contentChanged)
    Q_PROPERTY(QObject* content READ content NOTIFY contentChanged)

public:
    explicit SheetModel(const SharedObjects& objects, QObject* parent = nullptr);

    bool isOpen() const { return wanted() != Kind::none; }
    bool isDismissable() const { return shown_ == Kind::browser; }
    QString file() const;
    QObject* content() { return content_.get(); }

    /// The user is done with the sheet.
    Q_INVOKABLE void close();
    /// The sheet has gone from the screen.
    Q_INVOKABLE void closed();

Q_SIGNALS:
    void openChanged();
    void contentChanged();

private:
    enum class Kind { none, onboarding, browser };

    Kind wanted() const;
    void refresh();
    void show(Kind kind);

    SharedObjects objects_;
    Kind shown_ = Kind::none;
    /// The one that was last asked for; nothing once its sheet is to close.
    std::optional<ChromiumBrowser> browser_;
    std::unique_ptr<QObject> content_;
};

} // namespace pacelet
