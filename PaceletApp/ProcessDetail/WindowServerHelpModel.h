#pragma once

#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/ProcessDetail/DetailLook.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <vector>

namespace pacelet {

/// What makes the window server work. Asks for windows and displays once, when it is made.
class WindowServerHelpModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the panel's model")
    /// Empty until the displays are known.
    Q_PROPERTY(QString displays READ displays NOTIFY changed)
    /// Roles: name and first, the number of windows.
    Q_PROPERTY(QAbstractItemModel* windows READ windows CONSTANT)
    Q_PROPERTY(bool hasWindows READ hasWindows NOTIFY changed)
    /// Roles: look, a `FixLook`.
    Q_PROPERTY(QAbstractItemModel* fixes READ fixes CONSTANT)

public:
    explicit WindowServerHelpModel(const SharedObjects& objects, QObject* parent = nullptr);

    const QString& displays() const { return displays_; }
    QAbstractItemModel* windows() { return &windows_; }
    bool hasWindows() const { return !counts_.empty(); }
    QAbstractItemModel* fixes() { return &fixes_; }

    Q_INVOKABLE void perform(const QString& fix);

Q_SIGNALS:
    void changed();

private:
    struct Census {
        std::vector<WindowCount> counts;
        DisplayInfo displays;
    };

    static QCoro::Task<> ask(QPointer<WindowServerHelpModel> help, Scheduler& scheduler,
                             WindowServer& server);
    void answer(Census census);
    void refreshFixes();
    const ProcessGroup* group() const;

    SharedObjects objects_;
    std::vector<WindowCount> counts_;
    QString displays_;
    FigureListModel windows_;
    FixListModel fixes_;
};

} // namespace pacelet
