#pragma once

#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Scheduler/Heartbeat.h"

#include <QObject>
#include <QProperty>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace pacelet {

/// Whole seconds that have passed since `then`; 0 after the clock was set back.
double wholeSecondsSince(TimePoint then, TimePoint now);

/// "Paused", "Checking…" or "Live · checked 3s ago".
QString liveText(bool paused, std::optional<TimePoint> lastChecked, TimePoint now);

/// How fresh the figures of a screen are, to the second while the window is on screen, and the
/// switch that stops and resumes the measuring.
class LiveBadgeModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the screen's model")
    Q_PROPERTY(QString text READ text NOTIFY textChanged)
    Q_PROPERTY(bool paused READ paused NOTIFY pausedChanged)
    /// False before the first check.
    Q_PROPERTY(bool checked READ checked NOTIFY checkedChanged)

public:
    /// Both outlive this.
    LiveBadgeModel(Monitor& monitor, Scheduler& scheduler, QObject* parent = nullptr);

    QString text() const { return text_; }
    bool paused() const { return paused_; }
    bool checked() const { return checked_; }

    Q_INVOKABLE void togglePause() { monitor_.togglePause(); }

Q_SIGNALS:
    void textChanged();
    void pausedChanged();
    void checkedChanged();

private:
    void show();
    void showAge();
    Seconds untilAgeChanges() const;

    Monitor& monitor_;
    Scheduler& scheduler_;
    Heartbeat seconds_;
    Q_OBJECT_BINDABLE_PROPERTY(LiveBadgeModel, QString, text_, &LiveBadgeModel::textChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LiveBadgeModel, bool, paused_, &LiveBadgeModel::pausedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LiveBadgeModel, bool, checked_, &LiveBadgeModel::checkedChanged)
};

} // namespace pacelet
