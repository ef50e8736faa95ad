#pragma once

#include "Core/Support/Time.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace pacelet {

/// How fresh the figures of a screen are, and the switch that stops and resumes the measuring.
class LiveBadgeModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the screen's model")
    Q_PROPERTY(QString text READ text NOTIFY textChanged)
    Q_PROPERTY(bool paused READ paused NOTIFY stateChanged)
    /// False before the first check.
    Q_PROPERTY(bool checked READ checked NOTIFY stateChanged)

public:
    explicit LiveBadgeModel(QObject* parent = nullptr);

    const QString& text() const { return text_; }
    bool paused() const { return paused_; }
    bool checked() const { return lastChecked_.has_value(); }

    void show(bool paused, std::optional<TimePoint> lastChecked, TimePoint now);

    /// Brings the seconds of the text up to `now`.
    void showAge(TimePoint now);

    Q_INVOKABLE void togglePause() { Q_EMIT pauseToggled(); }

Q_SIGNALS:
    void textChanged();
    void stateChanged();
    void pauseToggled();

private:
    QString text_;
    bool paused_ = false;
    std::optional<TimePoint> lastChecked_;
};

} // namespace pacelet
