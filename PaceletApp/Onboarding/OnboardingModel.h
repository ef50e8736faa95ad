#pragma once

#include "Core/Platform/LoginItems.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QProperty>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// The panel of the first run.
class OnboardingModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    /// What the user has ticked; nothing happens before `finish`.
    Q_PROPERTY(bool startAtLogin READ startAtLogin WRITE setStartAtLogin NOTIFY startAtLoginChanged)

public:
    explicit OnboardingModel(const SharedObjects& objects, QObject* parent = nullptr);

    bool startAtLogin() const { return startAtLogin_.value(); }
    void setStartAtLogin(bool on) { startAtLogin_ = on; }

    /// Carries out the choice. A login service that refuses is no reason to stay: the settings show
    /// how it stands.
    Q_INVOKABLE void finish();

Q_SIGNALS:
    void startAtLoginChanged();

private:
    LoginItems& loginItems_;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(OnboardingModel, bool, startAtLogin_, false,
                                         &OnboardingModel::startAtLoginChanged)
};

} // namespace pacelet
