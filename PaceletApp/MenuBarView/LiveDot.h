#pragma once

#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Scheduler/Heartbeat.h"

#include <QObject>
#include <QProperty>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace pacelet {

QString liveDotText(const std::optional<TimePoint>& lastChecked, TimePoint now);

/// A small text of freshness. While it is not shown it has no text, and no timer runs.
class LiveDot final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(LiveDotModel)
    QML_UNCREATABLE("made by the shell")
    Q_PROPERTY(bool shown READ shown WRITE setShown NOTIFY shownChanged)
    Q_PROPERTY(QString text READ text NOTIFY textChanged)

public:
    LiveDot(Monitor& monitor, Scheduler& scheduler, QObject* parent = nullptr);

    bool shown() const { return heartbeat_.isActive(); }
    void setShown(bool shown);
    const QString& text() const { return text_.value(); }

Q_SIGNALS:
    void shownChanged();
    void textChanged();

private:
    void refresh();

    Monitor& monitor_;
    Scheduler& scheduler_;
    Heartbeat heartbeat_;
    Q_OBJECT_BINDABLE_PROPERTY(LiveDot, QString, text_, &LiveDot::textChanged)
};

} // namespace pacelet
